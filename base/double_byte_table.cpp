// A file of its own: the DLL asks for this table alone, and so leaves that of all codes out.

#include "base/ansi_code.h"
#include "base/ansi_code_table.h"

namespace corvelle {
namespace {

constexpr internal::DoubleByteTable double_byte_table() {
  internal::DoubleByteTable table{};
  for (std::size_t character = 0; character < 65536; ++character) {
    table.of[character] = internal::code_in_table(character) < 0 ? 1 : 0;
  }
  return table;
}

}  // namespace

constexpr internal::DoubleByteTable internal::kDoubleByte = double_byte_table();

}  // namespace corvelle
