#include "base/ansi_code.h"

#include "base/ansi_code_table.h"

namespace corvelle {
namespace {

constexpr std::uint8_t kEuroByte = 0x80;
constexpr std::uint8_t kFirstLeadByte = 0x81;
constexpr std::uint8_t kLastLeadByte = 0xFE;

constexpr std::int16_t code_in_table(std::size_t character) {
  const auto& page = internal::kAnsiPages[internal::kAnsiPageNumbers[character / 256]];
  return static_cast<std::int16_t>(page[character % 256]);
}

constexpr internal::DoubleByteTable double_byte_table() {
  internal::DoubleByteTable table{};
  for (std::size_t character = 0; character < 65536; ++character) {
    table.of[character] = code_in_table(character) < 0 ? 1 : 0;
  }
  return table;
}

char16_t decoded_byte(std::uint8_t byte) {
  if (byte < kEuroByte) return byte;
  if (byte == kEuroByte) return u'€';
  if (byte >= kFirstLeadByte && byte <= kLastLeadByte) return u'?';
  return u'\uF8F5';
}

}  // namespace

constexpr internal::DoubleByteTable internal::kDoubleByte = double_byte_table();

std::int16_t ansi_code(char16_t character) { return code_in_table(character); }

DecodedCode decoded(std::int32_t code) {
  const char16_t last = decoded_byte(static_cast<std::uint8_t>(code));
  if (code <= 0xFF) return {{last}, 1};
  return {{static_cast<char16_t>(code >> 8), last}, 2};
}

}  // namespace corvelle
