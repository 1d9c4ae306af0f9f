// base/ansi_code.h - the code of a character in code page 936, and the characters of a code.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvelle {

// The ANSI character code of `character`: 0 to 255 where code page 936 writes it as one byte; lead byte * 256 + trail
// byte taken as signed, and so negative, where it writes two. A character that the code page lacks, a lone surrogate
// among them, has the code of '?', 63.
//   ansi_code(u'a') == 97, ansi_code(u'中') == -10544, ansi_code(u'€') == 128
std::int16_t ansi_code(char16_t character);

namespace internal {

// Whether each character's code is negative, 1 or 0: a byte each, so that counting is one addition a character.
// A plain array, since vector code must not use the library's inline functions (see base/vectors/width_count_kernel.h).
struct DoubleByteTable {
  std::uint8_t of[65536];  // NOLINT(modernize-avoid-c-arrays)
};
extern const DoubleByteTable kDoubleByte;

}  // namespace internal

// Whether `character` takes two display columns: its ANSI character code is negative.
inline bool is_double_byte(char16_t character) { return internal::kDoubleByte.of[character] != 0; }

namespace internal {

constexpr char16_t decoded_byte(std::uint8_t byte) {
  constexpr std::uint8_t kEuroByte = 0x80;
  constexpr std::uint8_t kLastLeadByte = 0xFE;
  if (byte < kEuroByte) return byte;
  if (byte == kEuroByte) return u'€';
  return byte <= kLastLeadByte ? u'?' : u'\uF8F5';
}

}  // namespace internal

// The characters that the bytes of a code stand for: one or two.
struct DecodedCode {
  std::array<char16_t, 2> units;
  std::size_t length;

  std::u16string_view view() const { return {units.data(), length}; }
};

// The characters of `code`, 0 to 32,767, as code page 936 decodes its bytes. A code up to 255 is one byte: ASCII stands
// for itself, 80 for U+20AC, FF for U+F8F5, and a lead byte, alone as it is here, for '?'. A greater code is two bytes,
// of which the first is ASCII, never a lead byte: two characters.
//   decoded(97).view() == u"a", decoded(0x80).view() == u"€", decoded(0x81).view() == u"?",
//   decoded(0x6162).view() == u"ab"
constexpr DecodedCode decoded(std::int32_t code) {
  const char16_t last = internal::decoded_byte(static_cast<std::uint8_t>(code));
  if (code <= 0xFF) return {{last}, 1};
  return {{static_cast<char16_t>(code >> 8), last}, 2};
}

}  // namespace corvelle
