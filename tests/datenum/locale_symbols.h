// tests/datenum/locale_symbols.h - what locales write numbers with.
#pragma once

#include "datenum/decimal_number.h"
#include "datenum/number_symbols.h"

namespace corvelle {

inline constexpr NumberSymbols kChinese{.decimal_separator = {u"."},
                                        .grouping_separator = {u","},
                                        .currency = {u"¥"},
                                        .currency_decimal_separator = {u"."},
                                        .currency_grouping_separator = {u","}};
inline constexpr NumberSymbols kAmerican{.decimal_separator = {u"."},
                                         .grouping_separator = {u","},
                                         .currency = {u"$"},
                                         .currency_decimal_separator = {u"."},
                                         .currency_grouping_separator = {u","}};
inline constexpr NumberSymbols kGerman{.decimal_separator = {u","},
                                       .grouping_separator = {u"."},
                                       .currency = {u"€"},
                                       .currency_decimal_separator = {u","},
                                       .currency_grouping_separator = {u"."}};
inline constexpr NumberSymbols kPolish{.decimal_separator = {u","},
                                       .grouping_separator = {u"\u00A0"},
                                       .currency = {u"zł"},
                                       .currency_decimal_separator = {u","},
                                       .currency_grouping_separator = {u"\u00A0"}};

// The symbols of the locale that the program runs in.
inline NumberSymbols user_symbols() {
  NumberSymbols symbols;
  for (std::size_t i = 0; i < kSymbolCount; ++i) symbols.*kSymbolMembers[i] = user_symbol(static_cast<Symbol>(i));
  return symbols;
}

// Reads `text` with given symbols.
inline bool read_number(std::u16string_view text, const NumberSymbols& symbols, DecimalNumber& number) {
  const auto ask = [&](Symbol symbol) { return symbols[symbol]; };
  WantedSymbols wanted(ask);
  return read_number(text, wanted, number);
}

}  // namespace corvelle
