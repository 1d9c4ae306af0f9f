// tests/datenum/locale_symbols.h - what locales write numbers with.
#pragma once

#include "datenum/number_symbols.h"

namespace corvelle {

inline constexpr NumberSymbols kChinese{.decimal_separator = {u"."},
                                        .grouping_separator = u',',
                                        .currency = {u"¥"},
                                        .currency_decimal_separator = u'.',
                                        .currency_grouping_separator = u','};
inline constexpr NumberSymbols kAmerican{.decimal_separator = {u"."},
                                         .grouping_separator = u',',
                                         .currency = {u"$"},
                                         .currency_decimal_separator = u'.',
                                         .currency_grouping_separator = u','};
inline constexpr NumberSymbols kGerman{.decimal_separator = {u","},
                                       .grouping_separator = u'.',
                                       .currency = {u"€"},
                                       .currency_decimal_separator = u',',
                                       .currency_grouping_separator = u'.'};

// The symbols of the locale that the program runs in.
inline NumberSymbols user_symbols() {
  NumberSymbols symbols;
  for (const Symbol symbol : kSymbols) take_user_symbol(symbol, symbols);
  return symbols;
}

}  // namespace corvelle
