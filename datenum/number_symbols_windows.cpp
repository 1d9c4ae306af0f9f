#include <windows.h>

#include <iterator>

#include "datenum/number_symbols.h"

namespace corvelle {
namespace {

// What the user's locale has for `type`; `otherwise` where it has nothing, as the platform's own conversion does.
SymbolText text_of(LCTYPE type, const SymbolText& otherwise) {
  SymbolText text;
  auto* const units = reinterpret_cast<WCHAR*>(text.units);
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, units, static_cast<int>(std::size(text.units)));
  return length > 1 ? text : otherwise;
}

char16_t character_of(LCTYPE type, char16_t otherwise) { return text_of(type, {{otherwise}}).units[0]; }

}  // namespace

NumberSymbols user_number_symbols(SymbolSet wanted) {
  NumberSymbols symbols{
      .decimal_separator = text_of(LOCALE_SDECIMAL, {u"."}),
      .negative_sign = character_of(LOCALE_SNEGATIVESIGN, u'-'),
      .positive_sign = kNoSymbol,
  };
  if (wanted == SymbolSet::common) return symbols;
  symbols.grouping_separator = character_of(LOCALE_STHOUSAND, u',');
  symbols.positive_sign = character_of(LOCALE_SPOSITIVESIGN, u'+');
  symbols.currency = text_of(LOCALE_SCURRENCY, {});
  symbols.currency_decimal_separator = character_of(LOCALE_SMONDECIMALSEP, u'.');
  symbols.currency_grouping_separator = character_of(LOCALE_SMONTHOUSANDSEP, u',');
  return symbols;
}

}  // namespace corvelle
