#include "datenum/number_symbols.h"

namespace corvelle {

void take_user_symbols(SymbolGroup group, NumberSymbols& symbols) {
  if (group == SymbolGroup::negative) symbols.negative_sign = NumberSymbols{}.negative_sign;
  if (group == SymbolGroup::positive) symbols.positive_sign = NumberSymbols{}.positive_sign;
}

}  // namespace corvelle
