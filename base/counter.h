// base/counter.h - the signed 16-bit counters that walk a text.
//
// The published operations count positions and columns in signed 16-bit integers whose every step is checked.
// A walk over n characters steps past its last position too, so 32,767 characters overflow after the last was
// seen, and more overflow before the first. The checks stand outside the loops; the outcome is the same.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "base/errors.h"

namespace corvelle {

inline constexpr std::int64_t kCounterMax = std::numeric_limits<std::int16_t>::max();

namespace internal {

[[noreturn]] void raise_unfit(std::int64_t value, Argument where);
[[noreturn]] void raise_too_long(std::int64_t length, Argument where);

}  // namespace internal

// The checks are inline: a call of them would cost more than measuring the short texts that hosts send.

// `value` as a 16-bit integer. Raises overflow (6) outside -32,768..32,767, saying that `where` "gives VALUE".
inline std::int16_t narrow16(std::int64_t value, Argument where) {
  if (value < -kCounterMax - 1 || value > kCounterMax) internal::raise_unfit(value, where);
  return static_cast<std::int16_t>(value);
}

// The length of `text` in characters. Raises overflow (6) above 32,767 characters.
// For walks that may return early: call this first, and `step_past_end` where the walk runs out.
inline std::int16_t length16(std::u16string_view text, Argument where) {
  const auto length = static_cast<std::int64_t>(text.size());
  if (length > kCounterMax) internal::raise_too_long(length, where);
  return static_cast<std::int16_t>(length);
}

// The counter's step past the last of `length` characters. Raises overflow (6) when `length` is 32,767.
inline void step_past_end(std::int16_t length, Argument where) {
  if (length == kCounterMax) internal::raise_too_long(length, where);
}

// Raises overflow (6) unless a 16-bit counter can walk `length` characters from end to end: at 32,767 or more.
inline void check_walkable(std::int64_t length, Argument where) {
  if (length >= kCounterMax) internal::raise_too_long(length, where);
}

// `text`, when a 16-bit counter can walk it from end to end. Raises overflow (6) at 32,767 characters or more.
inline std::u16string_view walkable(std::u16string_view text, Argument where) {
  check_walkable(static_cast<std::int64_t>(text.size()), where);
  return text;
}

}  // namespace corvelle
