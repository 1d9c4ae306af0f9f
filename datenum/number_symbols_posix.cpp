#include "datenum/number_symbols.h"

namespace corvelle {

SymbolText user_symbol(Symbol /*symbol*/) { return {}; }

}  // namespace corvelle
