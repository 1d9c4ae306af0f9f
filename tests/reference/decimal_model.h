// tests/reference/decimal_model.h - number texts with fixed decimal places, by decimal arithmetic on digit strings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvelle::reference {

// What a locale writes numbers with; the empty text for what it does not have. Numbers are read by the first character
// of a separator or a sign.
struct Symbols {
  std::u16string decimal_separator = {};
  std::u16string grouping_separator = {};
  std::u16string negative_sign = {};
  std::u16string positive_sign = {};
  std::u16string currency = {};
  std::u16string currency_decimal_separator = {};
  std::u16string currency_grouping_separator = {};
};

// Whether the platform's conversion takes `text` for a number.
bool is_number(std::u16string_view text, const Symbols& symbols);

std::u16string GetDecimalFmt(std::u16string_view sglData);
std::u16string GetDecimalFmt_4(std::u16string_view sglData, const Symbols& symbols);
std::u16string GetDecimalFmt_8(std::u16string_view sglData, const Symbols& symbols);
std::u16string GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex, const Symbols& symbols);

}  // namespace corvelle::reference
