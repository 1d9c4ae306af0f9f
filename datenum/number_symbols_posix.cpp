#include "datenum/number_symbols.h"

namespace corvelle {

NumberSymbols user_number_symbols(SymbolSet /*wanted*/) { return {}; }

}  // namespace corvelle
