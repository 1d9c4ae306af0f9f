// datenum/number_symbols.h - what a locale writes numbers with.
#pragma once

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

// Asking the platform for a symbol costs as much as reading a number, and most texts need few.
enum class SymbolSet {
  common,  // the decimal separator and the negative sign
  all,
};

// The symbols of the user's locale, with what the user changed in it; those outside `wanted` are kNoSymbol. They are
// asked for at each call, so a change holds from the next call on. Off Windows, those of the C locale.
NumberSymbols user_number_symbols(SymbolSet wanted);

}  // namespace corvelle
