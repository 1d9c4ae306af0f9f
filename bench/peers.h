// bench/peers.h - what the operations are timed beside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "base/text.h"

namespace corvelle::bench {

// A plain read: the sum of the text's 64-bit words. A function of its own, so that every target compiles it alike.
[[gnu::noinline]] inline std::uint64_t plain_read(std::u16string_view text) {
  std::uint64_t sum = 0;
  for (std::size_t at = 0; at + 4 <= text.size(); at += 4) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, sizeof word);
    sum += word;
  }
  return sum;
}

// The n-th field as a plain loop finds it.
inline std::u16string_view field_by_plain_loop(std::u16string_view text, std::int32_t number, char16_t separator) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != separator) continue;
    if (--number == 0) return text.substr(begin, i - begin);
    begin = i + 1;
  }
  return {};
}

inline Text plain_field(std::u16string_view text, std::int16_t number, std::u16string_view separator) {
  return Text(field_by_plain_loop(text, number, separator[0]));
}

}  // namespace corvelle::bench
