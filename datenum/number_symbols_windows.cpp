#include <windows.h>

#include <iterator>

#include "datenum/number_symbols.h"

namespace corvelle {
namespace {

// What the platform calls a symbol, and what its own conversion takes where the user's locale has none.
struct Entry {
  LCTYPE type;
  char16_t otherwise;
};
constexpr Entry kEntries[] = {
    {LOCALE_SDECIMAL, u'.'},        {LOCALE_SNEGATIVESIGN, u'-'}, {LOCALE_STHOUSAND, u','},
    {LOCALE_SPOSITIVESIGN, u'+'},   {LOCALE_SCURRENCY, u'\0'},    {LOCALE_SMONDECIMALSEP, u'.'},
    {LOCALE_SMONTHOUSANDSEP, u','},
};
static_assert(std::size(kEntries) == kSymbols.size() && kSymbols.back() == Symbol::currency_grouping);

}  // namespace

void take_user_symbol(Symbol symbol, NumberSymbols& symbols) {
  const Entry& entry = kEntries[static_cast<std::size_t>(symbol)];
  SymbolText text;
  auto* const units = reinterpret_cast<WCHAR*>(text.units);
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, entry.type, units, static_cast<int>(std::size(text.units)));
  if (length <= 1) text = {{entry.otherwise}};
  switch (symbol) {
    case Symbol::decimal: symbols.decimal_separator = text; break;
    case Symbol::negative: symbols.negative_sign = text.units[0]; break;
    case Symbol::grouping: symbols.grouping_separator = text.units[0]; break;
    case Symbol::positive: symbols.positive_sign = text.units[0]; break;
    case Symbol::currency: symbols.currency = text; break;
    case Symbol::currency_decimal: symbols.currency_decimal_separator = text.units[0]; break;
    case Symbol::currency_grouping: symbols.currency_grouping_separator = text.units[0]; break;
  }
}

}  // namespace corvelle
