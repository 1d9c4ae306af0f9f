// tests/reference/decimal_model.h - number texts with fixed decimal places, by decimal arithmetic on digit strings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvelle::reference {

// What a locale writes numbers with; NUL or the empty text for what it does not have.
struct Symbols {
  std::u16string decimal_separator = u".";
  char16_t grouping_separator = u'\0';
  char16_t negative_sign = u'-';
  char16_t positive_sign = u'+';
  std::u16string currency = {};
  char16_t currency_decimal_separator = u'\0';
  char16_t currency_grouping_separator = u'\0';
};

// Whether the platform's conversion takes `text` for a number.
bool is_number(std::u16string_view text, const Symbols& symbols);

std::u16string GetDecimalFmt(std::u16string_view sglData);
std::u16string GetDecimalFmt_4(std::u16string_view sglData, const Symbols& symbols);
std::u16string GetDecimalFmt_8(std::u16string_view sglData, const Symbols& symbols);
std::u16string GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex, const Symbols& symbols);

}  // namespace corvelle::reference
