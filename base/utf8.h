// base/utf8.h - UTF-16 texts in UTF-8.
#pragma once

#include <cstddef>
#include <string_view>

namespace corvelle {

constexpr bool is_high_surrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool is_low_surrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// Calls `put` for each byte of `text` in UTF-8, at most three for each code unit. A surrogate without its other half
// becomes U+FFFD.
//   std::string bytes; for_each_utf8_byte(u"€", [&](char byte) { bytes += byte; }); bytes == "\xE2\x82\xAC"
template <class Put>
constexpr void for_each_utf8_byte(std::u16string_view text, Put put) {
  const auto put_all = [&](char32_t leading_bits, char32_t character, int shift) {
    put(static_cast<char>(leading_bits | character >> shift));
    while ((shift -= 6) >= 0) put(static_cast<char>(0x80 | (character >> shift & 0x3F)));
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t character = text[i];
    if (is_high_surrogate(text[i]) && i + 1 < text.size() && is_low_surrogate(text[i + 1])) {
      character = ((character - 0xD7C0) << 10) + (text[++i] & 0x3FFu);
    } else if (is_high_surrogate(text[i]) || is_low_surrogate(text[i])) {
      character = 0xFFFD;
    }
    if (character < 0x80) {
      put_all(0, character, 0);
    } else if (character < 0x800) {
      put_all(0xC0, character, 6);
    } else if (character < 0x10000) {
      put_all(0xE0, character, 12);
    } else {
      put_all(0xF0, character, 18);
    }
  }
}

}  // namespace corvelle
