// datenum/number_symbols.h - what a locale writes numbers with.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace corvelle {

// A symbol of several characters, ended by NUL; 13 are the most that a currency symbol has.
struct SymbolText {
  char16_t units[14];
  constexpr std::u16string_view view() const { return units; }
};

inline constexpr char16_t kNoSymbol = u'\0';

// The symbols of the C locale, until a locale says otherwise. A number text is read by a separator's or a sign's first
// character; the decimal separator is written in full.
struct NumberSymbols {
  SymbolText decimal_separator = {u"."};
  char16_t grouping_separator = kNoSymbol;
  char16_t negative_sign = u'-';
  char16_t positive_sign = u'+';
  SymbolText currency = {};
  char16_t currency_decimal_separator = kNoSymbol;
  char16_t currency_grouping_separator = kNoSymbol;
};

// The symbols, in the order in which texts need them: asking the platform for one costs as much as reading a number,
// and most texts need the first one alone.
enum class Symbol : std::uint8_t {
  decimal,
  negative,
  grouping,
  positive,
  currency,
  currency_decimal,
  currency_grouping
};
inline constexpr std::array kSymbols = {Symbol::decimal,          Symbol::negative, Symbol::grouping,
                                        Symbol::positive,         Symbol::currency, Symbol::currency_decimal,
                                        Symbol::currency_grouping};

// Sets this one of `symbols` to that of the user's locale, with what the user changed in it. The platform is asked each
// time, so a change holds from the next call on. Off Windows, to that of the C locale.
void take_user_symbol(Symbol symbol, NumberSymbols& symbols);

}  // namespace corvelle
