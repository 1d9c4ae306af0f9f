// tests/support/utf8.h - UTF-16 texts for a person to read.
#pragma once

#include <string>
#include <string_view>

namespace corvelle::testing {

// `text` in UTF-8, unit by unit, so that lone surrogates show up too.
inline std::string utf8(std::u16string_view text) {
  std::string result;
  for (const char16_t unit : text) {
    if (unit < 0x80) {
      result += static_cast<char>(unit);
    } else if (unit < 0x800) {
      result += {static_cast<char>(0xC0 | (unit >> 6)), static_cast<char>(0x80 | (unit & 0x3F))};
    } else {
      result += {static_cast<char>(0xE0 | (unit >> 12)), static_cast<char>(0x80 | ((unit >> 6) & 0x3F)),
                 static_cast<char>(0x80 | (unit & 0x3F))};
    }
  }
  return result;
}

}  // namespace corvelle::testing
