// base/vectors/width_count_kernel.h - the walk that both vector widths share.
//
// Nearly all that hosts measure is ASCII and Chinese characters, one range each, which vector code tells apart in five
// instructions. A scanner counts whole blocks as long as it knows all their characters; where it stops, the next one
// goes on. The last ones know all characters, and stop after a while for the first scanner to try again, so that one
// odd character slows down a part of the text and not all of it.
//
// This file is compiled for several processors: everything in it must stay inside the including file, so that the
// linker never picks the code for the newer processor for the older one. Hence the anonymous namespace, and no function
// of the standard library.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/ansi_code.h"

namespace corvelle::internal {
namespace {

constexpr std::size_t kBlock = 64;           // characters that a scanner takes or leaves together
constexpr std::size_t kChunk = 31 * kBlock;  // the most in which no lane of eight counts past 255

constexpr int kFirstChinese = 0x4E00;  // 一 to 龥, all double-byte
constexpr int kLastChinese = 0x9FA5;
constexpr int kNotAscii = 0xFF80;  // the bits that no ASCII character has

// Vectors compare signed numbers only: where a range's first character is moved onto the lowest of them, one comparison
// tells the range from everything else.
constexpr int kLowest = -0x8000;

// How far a scanner came, and the double-byte characters up to there.
struct Counted {
  std::size_t characters;
  std::size_t double_byte;
};

// Looks up every character; knows them all.
[[gnu::always_inline]] inline Counted scan_by_character(const char16_t* text, std::size_t length) {
  constexpr std::size_t kStep = 8;
  std::size_t even = 0;  // two sums, so that one addition need not wait for the other
  std::size_t odd = 0;
  std::size_t at = 0;
  for (; at + kStep <= length; at += kStep) {
#pragma GCC unroll 4
    for (std::size_t i = at; i < at + kStep; i += 2) {
      even += kDoubleByte.of[text[i]];
      odd += kDoubleByte.of[text[i + 1]];
    }
  }
  for (; at < length; ++at) even += kDoubleByte.of[text[at]];
  return {length, even + odd};
}

// Counts blocks of ASCII and Chinese characters, in any mixture.
template <class Vector>
[[gnu::always_inline]] inline Counted scan_ascii_and_chinese(const char16_t* text, std::size_t length) {
  const Vector to_lowest = Vector::of(kLowest - kFirstChinese);
  const Vector past_last = Vector::of(kLowest + kLastChinese - kFirstChinese + 1);
  const Vector not_ascii = Vector::of(kNotAscii);
  std::size_t chinese = 0;
  std::size_t at = 0;
  for (bool known = true; known && at + kBlock <= length;) {
    const std::size_t end = length - at < kChunk ? length : at + kChunk;
    Vector in_lane = Vector::of(0);
    for (; at + kBlock <= end; at += kBlock) {
      const Vector before_block = in_lane;
      Vector bits_of_others = Vector::of(0);
#pragma GCC unroll 2
      for (std::size_t i = 0; i < kBlock; i += Vector::kLanes) {
        const Vector units = Vector::load(text + at + i);
        const Vector is_chinese = greater(past_last, add(units, to_lowest));
        in_lane = subtract(in_lane, is_chinese);
        bits_of_others = either(bits_of_others, but_not(units, is_chinese));
      }
      known = !any(bits_of_others, not_ascii);
      if (!known) {
        in_lane = before_block;
        break;
      }
    }
    chinese += sum(in_lane);
  }
  return {at, chinese};
}

}  // namespace
}  // namespace corvelle::internal
