#include "base/ansi_code.h"

#include "base/ansi_code_table.h"

namespace corvelle {

std::int16_t ansi_code(char16_t character) { return internal::code_in_table(character); }

}  // namespace corvelle
