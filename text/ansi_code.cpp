#include "text/ansi_code.h"

#include "text/ansi_code_table.h"

namespace corvelle {
namespace {

constexpr std::uint8_t kEuroByte = 0x80;
constexpr std::uint8_t kFirstLeadByte = 0x81;
constexpr std::uint8_t kLastLeadByte = 0xFE;

char16_t decoded_byte(std::uint8_t byte) {
  if (byte < kEuroByte) return byte;
  if (byte == kEuroByte) return u'€';
  if (byte >= kFirstLeadByte && byte <= kLastLeadByte) return u'?';
  return u'\uF8F5';
}

}  // namespace

std::int16_t ansi_code(char16_t character) {
  const auto& page = internal::kAnsiPages[internal::kAnsiPageNumbers[character >> 8]];
  return static_cast<std::int16_t>(page[character & 0xFF]);
}

DecodedCode decoded(std::int32_t code) {
  const char16_t last = decoded_byte(static_cast<std::uint8_t>(code));
  if (code <= 0xFF) return {{last}, 1};
  return {{static_cast<char16_t>(code >> 8), last}, 2};
}

}  // namespace corvelle
