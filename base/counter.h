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
#include "base/result.h"

namespace corvelle {

inline constexpr std::int64_t kCounterMax = std::numeric_limits<std::int16_t>::max();

namespace internal {
Error does_not_fit(std::int64_t value, Argument where) noexcept;
Error has_too_many(std::int64_t length, Argument where) noexcept;
}  // namespace internal

// The checks are inline: a call of them would cost more than measuring the short texts that hosts send.

// `value` as a 16-bit integer. Raises overflow (6) outside -32,768..32,767, saying that `where` "gives VALUE".
inline Result<std::int16_t> narrow16(std::int64_t value, Argument where) noexcept {
  if (value < -kCounterMax - 1 || value > kCounterMax) return internal::does_not_fit(value, where);
  return static_cast<std::int16_t>(value);
}

// Overflow (6) where a 16-bit counter cannot walk `length` characters from end to end: at 32,767 or more.
inline Error too_long(std::int64_t length, Argument where) noexcept {
  return length >= kCounterMax ? internal::has_too_many(length, where) : Error();
}
inline Error too_long(std::u16string_view text, Argument where) noexcept {
  return too_long(static_cast<std::int64_t>(text.size()), where);
}

// Overflow (6) where the length of `text` does not fit in 16 bits: above 32,767 characters. For walks that may end
// early: ask this first, and `too_long` where the walk runs out.
inline Error too_long_to_begin(std::u16string_view text, Argument where) noexcept {
  return static_cast<std::int64_t>(text.size()) > kCounterMax ? too_long(text, where) : Error();
}

}  // namespace corvelle
