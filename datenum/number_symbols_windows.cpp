#include <windows.h>

#include <iterator>

#include "datenum/number_symbols.h"

namespace corvelle {

SymbolText user_symbol(Symbol symbol) {
  constexpr LCTYPE kTypes[kSymbolCount] = {LOCALE_SDECIMAL,       LOCALE_STHOUSAND, LOCALE_SNEGATIVESIGN,
                                           LOCALE_SPOSITIVESIGN,  LOCALE_SCURRENCY, LOCALE_SMONDECIMALSEP,
                                           LOCALE_SMONTHOUSANDSEP};
  SymbolText text = {};
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, kTypes[static_cast<std::size_t>(symbol)],
                                    reinterpret_cast<WCHAR*>(text.units), static_cast<int>(std::size(text.units)));
  return length > 0 ? text : SymbolText{};
}

}  // namespace corvelle
