// base/vectors/scalar.h - what code_units.h and unit_map.h have, unit by unit.
//
// It serves the ends of texts and older processors, the tests hold it against the vector code, and the benchmarks
// measure what that gains.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/vectors/unit_map.h"

namespace corvelle::scalar {
namespace internal {

// Without branches, since text mixes both kinds without a pattern.
template <class Stays>
std::size_t sift(std::u16string_view text, char16_t* to, Stays stays) {
  std::size_t kept = 0;
  for (const char16_t unit : text) {
    to[kept] = unit;
    kept += stays(unit) ? 1 : 0;
  }
  return kept;
}

}  // namespace internal

inline std::size_t find_unit(std::u16string_view text, char16_t unit) { return text.find(unit); }

inline std::size_t find_last_unit(std::u16string_view text, char16_t unit) { return text.rfind(unit); }

inline std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n) {
  if (n == 0) return std::u16string_view::npos;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == unit && --n == 0) return i;
  }
  return std::u16string_view::npos;
}

inline std::size_t count_unit(std::u16string_view text, char16_t unit) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), unit));
}

inline std::size_t copy_without(std::u16string_view text, char16_t unit, char16_t* to) {
  return internal::sift(text, to, [=](char16_t c) { return c != unit; });
}

inline std::size_t copy_range(std::u16string_view text, char16_t first, char16_t last, char16_t* to) {
  return internal::sift(text, to, [=](char16_t c) { return c >= first && c <= last; });
}

inline void copy_every_second(std::u16string_view text, char16_t* to) {
  for (std::size_t i = 0; i < text.size(); i += 2) *to++ = text[i];
}

inline void copy_with_pairs(std::u16string_view text, char16_t first, const char16_t* seconds, char16_t* to) {
  for (const char16_t unit : text) {
    *to++ = unit;
    *to++ = first;
    *to++ = *seconds++;
  }
}

inline std::size_t copy_mapped(std::u16string_view text, const UnitMap& map, char16_t* to) {
  char16_t* end = to;
  for (const char16_t unit : text) {
    *end++ = map.first_of(unit);
    if (unit == map.lengthened()) *end++ = map.second();
  }
  return static_cast<std::size_t>(end - to);
}

}  // namespace corvelle::scalar
