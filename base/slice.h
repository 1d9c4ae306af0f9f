// base/slice.h - trimming, substrings and the one search; positions are 1-based and count code units.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvelle {

// `text` without its first `count` code units, of which it has that many. (The library's substr, and what uses it,
// would bring an exception with it.)
constexpr std::u16string_view behind(std::u16string_view text, std::size_t count) {
  return {text.data() + count, text.size() - count};
}

// The first `count` code units of `text`, all of a shorter one.
constexpr std::u16string_view first_of(std::u16string_view text, std::size_t count) {
  return {text.data(), std::min(text.size(), count)};
}

// Whether `text` begins with `beginning`.
constexpr bool begins_with(std::u16string_view text, std::u16string_view beginning) {
  return first_of(text, beginning.size()) == beginning;
}

// `text` without leading and trailing space characters (U+0020 only; U+3000 and tabs stay).
std::u16string_view trimmed(std::u16string_view text);

// The at most `length` characters of `text` from `position` on; empty where `position` lies beyond the end.
// `position` must be at least 1 and `length` at least 0; callers raise their own error for less.
//   substring(u"abc", 2, 9) == u"bc"
std::u16string_view substring(std::u16string_view text, std::int64_t position, std::int64_t length);

// The position of the first `wanted` in `text` at or after `start` (1-based), 0 where there is none.
// Exact comparison, code unit by code unit. An empty `wanted` is found at `start` while that lies within
// the text (1 to its length), and not found beyond it.
//   position_of(u"a,b,c", u",", 3) == 4
std::int64_t position_of(std::u16string_view text, std::u16string_view wanted, std::int64_t start);

}  // namespace corvelle
