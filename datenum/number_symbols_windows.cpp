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

void take_user_symbols(SymbolGroup group, NumberSymbols& symbols) {
  switch (group) {
    case SymbolGroup::decimal: symbols.decimal_separator = text_of(LOCALE_SDECIMAL, {u"."}); break;
    case SymbolGroup::negative: symbols.negative_sign = character_of(LOCALE_SNEGATIVESIGN, u'-'); break;
    case SymbolGroup::grouping: symbols.grouping_separator = character_of(LOCALE_STHOUSAND, u','); break;
    case SymbolGroup::positive: symbols.positive_sign = character_of(LOCALE_SPOSITIVESIGN, u'+'); break;
    case SymbolGroup::currency:
      symbols.currency = text_of(LOCALE_SCURRENCY, {});
      symbols.currency_decimal_separator = character_of(LOCALE_SMONDECIMALSEP, u'.');
      symbols.currency_grouping_separator = character_of(LOCALE_SMONTHOUSANDSEP, u',');
      break;
  }
}

}  // namespace corvelle
