#include "datenum/number_symbols.h"

namespace corvelle {

void take_user_symbol(Symbol symbol, NumberSymbols& symbols) {
  constexpr NumberSymbols kUsual;
  if (symbol == Symbol::decimal) symbols.decimal_separator = kUsual.decimal_separator;
  if (symbol == Symbol::negative) symbols.negative_sign = kUsual.negative_sign;
  if (symbol == Symbol::positive) symbols.positive_sign = kUsual.positive_sign;
}

}  // namespace corvelle
