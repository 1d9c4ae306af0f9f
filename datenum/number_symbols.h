// datenum/number_symbols.h - what a locale writes numbers with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace corvelle {

// A symbol of several characters, ended by NUL; 13 are the most that a currency symbol has.
struct SymbolText {
  char16_t units[14];
  constexpr std::u16string_view view() const { return units; }
};

// The kinds of symbols, in the order of NumberSymbols.
enum class Symbol : std::uint8_t {
  decimal,
  grouping,
  negative,
  positive,
  currency,
  currency_decimal,
  currency_grouping
};

// The symbols of a locale, empty where it has none. A number text is read by a separator's or a sign's first character;
// the decimal separator is written in full. For some that are empty the usual ones are read (decimal_number.h).
struct NumberSymbols {
  SymbolText decimal_separator = {};
  SymbolText grouping_separator = {};
  SymbolText negative_sign = {};
  SymbolText positive_sign = {};
  SymbolText currency = {};
  SymbolText currency_decimal_separator = {};
  SymbolText currency_grouping_separator = {};

  // The one of this kind.
  constexpr const SymbolText& operator[](Symbol symbol) const;
};

// Where each kind of symbol is, in the order of Symbol.
inline constexpr SymbolText NumberSymbols::* kSymbolMembers[] = {&NumberSymbols::decimal_separator,
                                                                 &NumberSymbols::grouping_separator,
                                                                 &NumberSymbols::negative_sign,
                                                                 &NumberSymbols::positive_sign,
                                                                 &NumberSymbols::currency,
                                                                 &NumberSymbols::currency_decimal_separator,
                                                                 &NumberSymbols::currency_grouping_separator};
// How many kinds there are.
inline constexpr std::size_t kSymbolCount = std::size(kSymbolMembers);

constexpr const SymbolText& NumberSymbols::operator[](Symbol symbol) const {
  return this->*kSymbolMembers[static_cast<std::size_t>(symbol)];
}

// The symbol of the user's locale, with what the user changed in it. The platform is asked each time, so a change holds
// from the next call on. Off Windows, all are empty.
SymbolText user_symbol(Symbol symbol);

}  // namespace corvelle
