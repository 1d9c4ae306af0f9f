// datenum/decimal_format.h - number texts with a fixed number of decimal places.
//
// A text that the locale's conversion accepts as a number (datenum/decimal_number.h) is written with at least one
// integer digit, no grouping, the locale's decimal separator and exactly the decimal places asked for, rounded half
// away from zero on the digits of the text. A negative number keeps its "-" even where it rounds to zero, as the
// platform's formatting does. Any other text comes back unchanged, whatever its length; nothing is an error.
// Each operation uses the symbols of the user's locale, or those given.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/result.h"
#include "base/text.h"
#include "datenum/number_symbols.h"

namespace corvelle {

// Kept: the empty text, whatever `sglData` is.
Result<Text> GetDecimalFmt(std::u16string_view sglData);

// Four decimal places.
//   GetDecimalFmt_4(u"3.14159") == u"3.1416", GetDecimalFmt_4(u"abc") == u"abc"
Result<Text> GetDecimalFmt_4(std::u16string_view sglData);
Result<Text> GetDecimalFmt_4(std::u16string_view sglData, const NumberSymbols& symbols);

// Eight decimal places.
//   GetDecimalFmt_8(u"3.14159") == u"3.14159000"
Result<Text> GetDecimalFmt_8(std::u16string_view sglData);
Result<Text> GetDecimalFmt_8(std::u16string_view sglData, const NumberSymbols& symbols);

// `sglIndex` decimal places for an index from 1 to 8; for any other index `sglData` as it is.
//   GetDecimalFmt_Bus(u"2.5", 2) == u"2.50", GetDecimalFmt_Bus(u"2.5", 0) == u"2.5"
Result<Text> GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex);
Result<Text> GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex, const NumberSymbols& symbols);

}  // namespace corvelle
