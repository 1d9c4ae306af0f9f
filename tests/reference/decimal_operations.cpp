#include <algorithm>

#include "datenum/decimal_format.h"
#include "tests/reference/arguments.h"
#include "tests/reference/comparison.h"
#include "tests/reference/decimal_model.h"

namespace corvelle::testing {
namespace {

// The C locale, some of the world's, and what a user might make of one. An argument is the number of a row.
const reference::Symbols kLocales[] = {
    {},
    {.grouping_separator = u',',
     .currency = u"¥",
     .currency_decimal_separator = u'.',
     .currency_grouping_separator = u','},
    {.grouping_separator = u',', .currency = u"$"},
    {.decimal_separator = u",",
     .grouping_separator = u'.',
     .currency = u"€",
     .currency_decimal_separator = u',',
     .currency_grouping_separator = u'.'},
    {.decimal_separator = u",", .grouping_separator = u'\u00A0', .currency = u"kr"},
    {.decimal_separator = u"::", .grouping_separator = u'\'', .negative_sign = u'~', .currency = u"Fr."},
    {.grouping_separator = u'’',
     .currency = u"CHF",
     .currency_decimal_separator = u',',
     .currency_grouping_separator = u' '},
    {.grouping_separator = u',',
     .currency = u"元",
     .currency_decimal_separator = u',',
     .currency_grouping_separator = u'.'},
};

NumberSymbols for_product(const reference::Symbols& symbols) {
  NumberSymbols result;
  result.decimal_separator = {};
  std::copy(symbols.decimal_separator.begin(), symbols.decimal_separator.end(), result.decimal_separator.units);
  std::copy(symbols.currency.begin(), symbols.currency.end(), result.currency.units);
  result.grouping_separator = symbols.grouping_separator;
  result.negative_sign = symbols.negative_sign;
  result.positive_sign = symbols.positive_sign;
  result.currency_decimal_separator = symbols.currency_decimal_separator;
  result.currency_grouping_separator = symbols.currency_grouping_separator;
  return result;
}

// An American number text with the symbols of another locale.
std::u16string translated(std::u16string_view text, const reference::Symbols& symbols) {
  std::u16string result;
  for (const char16_t unit : text) {
    switch (unit) {
      case u'.': result += symbols.decimal_separator; break;
      case u',': result += symbols.grouping_separator; break;
      case u'-': result += symbols.negative_sign; break;
      case u'$': result += symbols.currency; break;
      default: result += unit;
    }
  }
  return result;
}

auto decimal_arguments(Choices& choices) {
  const auto locale = static_cast<std::int16_t>(choices.below(std::size(kLocales)));
  std::u16string sglData = numeric_text(choices);
  if (!choices.once_in(4)) sglData = translated(sglData, kLocales[locale]);
  return std::tuple(std::move(sglData), locale);
}

auto indexed_arguments(Choices& choices) {
  auto [sglData, locale] = decimal_arguments(choices);
  const std::int16_t sglIndex =
      choices.once_in(8) ? any_int16(choices, 8) : static_cast<std::int16_t>(choices.between(1, 8));
  return std::tuple(std::move(sglData), sglIndex, locale);
}

}  // namespace

std::vector<ComparedOperation> decimal_operations() {
  const auto text = [](Choices& choices) { return std::tuple(numeric_text(choices)); };
  return {
      compared("GetDecimalFmt", {}, GetDecimalFmt, reference::GetDecimalFmt, text),
      compared(
          "GetDecimalFmt_4", {},
          [](std::u16string_view sglData, std::int16_t locale) {
            return GetDecimalFmt_4(sglData, for_product(kLocales[locale]));
          },
          [](std::u16string_view sglData, std::int16_t locale) {
            return reference::GetDecimalFmt_4(sglData, kLocales[locale]);
          },
          decimal_arguments),
      compared(
          "GetDecimalFmt_8", {},
          [](std::u16string_view sglData, std::int16_t locale) {
            return GetDecimalFmt_8(sglData, for_product(kLocales[locale]));
          },
          [](std::u16string_view sglData, std::int16_t locale) {
            return reference::GetDecimalFmt_8(sglData, kLocales[locale]);
          },
          decimal_arguments),
      compared(
          "GetDecimalFmt_Bus", {},
          [](std::u16string_view sglData, std::int16_t sglIndex, std::int16_t locale) {
            return GetDecimalFmt_Bus(sglData, sglIndex, for_product(kLocales[locale]));
          },
          [](std::u16string_view sglData, std::int16_t sglIndex, std::int16_t locale) {
            return reference::GetDecimalFmt_Bus(sglData, sglIndex, kLocales[locale]);
          },
          indexed_arguments),
  };
}

}  // namespace corvelle::testing
