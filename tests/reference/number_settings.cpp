#include "tests/reference/number_settings.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "tests/reference/arguments.h"

namespace corvelle::testing {
namespace {

const reference::Symbols kLocales[] = {
    {},
    {.grouping_separator = u",",
     .currency = u"¥",
     .currency_decimal_separator = u".",
     .currency_grouping_separator = u","},
    {.decimal_separator = u",",
     .grouping_separator = u".",
     .currency = u"€",
     .currency_decimal_separator = u",",
     .currency_grouping_separator = u"."},
    {.decimal_separator = u",",
     .grouping_separator = u".",
     .currency = u"¥",
     .currency_decimal_separator = u".",
     .currency_grouping_separator = u","},
    {.decimal_separator = u",",
     .grouping_separator = u"\u00A0",
     .currency = u"zł",
     .currency_decimal_separator = u",",
     .currency_grouping_separator = u"\u00A0"},
    {.decimal_separator = u"::", .grouping_separator = u"'", .negative_sign = u"~", .currency = u"Fr."},
    {.grouping_separator = u"’",
     .currency = u"CHF",
     .currency_decimal_separator = u",",
     .currency_grouping_separator = u" "},
};

std::u16string separator_setting(Choices& choices) {
  static constexpr std::u16string_view kSeparators[] = {u"",   u"",       u".",       u".",      u",", u",",
                                                        u" ",  u"\u00A0", u"\u00A0",  u"\u202F", u"'", u"_",
                                                        u"::", u". ",     u"\u00A0 ", u"-",      u"$"};
  return std::u16string(choices.one_of(kSeparators));
}

std::u16string sign_setting(Choices& choices, std::u16string_view usual) {
  static constexpr std::u16string_view kSigns[] = {u"", u"-", u"+", u"~", u"−", u"--", u".", u",", u"$"};
  return std::u16string(choices.once_in(2) ? usual : choices.one_of(kSigns));
}

std::u16string currency_setting(Choices& choices) {
  static constexpr std::u16string_view kCurrencies[] = {u"",  u"$",   u"¥",   u"kr", u"zł", u"CHF", u"Fr.",
                                                        u"e", u"kr ", u" kr", u".",  u",",  u"-"};
  return std::u16string(choices.one_of(kCurrencies));
}

}  // namespace

reference::Symbols number_setting(std::int16_t number) {
  const auto index = static_cast<std::size_t>(number);
  if (index < std::size(kLocales)) return kLocales[index];
  RandomChoices choices(index);
  return {.decimal_separator = separator_setting(choices),
          .grouping_separator = separator_setting(choices),
          .negative_sign = sign_setting(choices, u"-"),
          .positive_sign = sign_setting(choices, u"+"),
          .currency = currency_setting(choices),
          .currency_decimal_separator = separator_setting(choices),
          .currency_grouping_separator = separator_setting(choices)};
}

NumberSymbols for_product(const reference::Symbols& symbols) {
  const auto text = [](const std::u16string& symbol) {
    SymbolText result = {};
    std::copy(symbol.begin(), symbol.end(), result.units);
    return result;
  };
  return {.decimal_separator = text(symbols.decimal_separator),
          .grouping_separator = text(symbols.grouping_separator),
          .negative_sign = text(symbols.negative_sign),
          .positive_sign = text(symbols.positive_sign),
          .currency = text(symbols.currency),
          .currency_decimal_separator = text(symbols.currency_decimal_separator),
          .currency_grouping_separator = text(symbols.currency_grouping_separator)};
}

std::u16string number_text(Choices& choices, const reference::Symbols& symbols) {
  const auto symbol = [&](char16_t usual) -> std::u16string {
    switch (usual) {
      case u'.': return choices.once_in(4) ? symbols.currency_decimal_separator : symbols.decimal_separator;
      case u',':
        if (choices.once_in(4)) return u" ";
        return choices.once_in(3) ? symbols.currency_grouping_separator : symbols.grouping_separator;
      case u'-': return symbols.negative_sign;
      case u'+': return symbols.positive_sign;
      case u'$': return symbols.currency;
      default: return {usual};
    }
  };
  std::u16string american;
  if (choices.once_in(2)) {
    american = numeric_text(choices);
  } else {
    constexpr std::u16string_view kUsual = u"0123456789....,,,,--+$$eE  ()&HF";
    for (std::uint32_t left = choices.below(9); left > 0; --left) american += choices.one_of(kUsual);
  }
  if (choices.once_in(8)) return american;
  std::u16string result;
  for (const char16_t usual : american) result += choices.once_in(16) ? std::u16string{usual} : symbol(usual);
  return result;
}

}  // namespace corvelle::testing
