// base/code_units.h - finding, counting and sifting the code units of a text, many at a time.
//
// Offsets are 0-based. Each function has a twin of the same meaning in namespace scalar, which goes unit by unit: it
// serves the ends of texts and older processors, and the tests hold the two against each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvelle {

inline constexpr std::size_t kNowhere = std::u16string_view::npos;

// How many units stand at `units` before the next 32-byte boundary, from which on no vector crosses a line of the
// cache.
inline std::size_t units_to_alignment(const char16_t* units) {
  constexpr std::uintptr_t kBytes = 32;
  return (kBytes - reinterpret_cast<std::uintptr_t>(units) % kBytes) % kBytes / sizeof(char16_t);
}

// The offset of the first `unit` in `text`, kNowhere where there is none.
//   find_unit(u"a,b", u',') == 1
std::size_t find_unit(std::u16string_view text, char16_t unit);

// The offset of the `n`-th `unit` in `text`, counted from 1; kNowhere where there are fewer, and for an `n` of 0.
//   find_nth_unit(u"a,b,c", u',', 2) == 3
std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n);

// How often `unit` stands in `text`.
std::size_t count_unit(std::u16string_view text, char16_t unit);

// Removes every `unit` from the `length` units at `text`, in place, and gives the number of units that stay.
std::size_t remove_unit(char16_t* text, std::size_t length, char16_t unit);

// Removes every unit outside `first`..`last` likewise.
std::size_t keep_range(char16_t* text, std::size_t length, char16_t first, char16_t last);

namespace scalar {

std::size_t find_unit(std::u16string_view text, char16_t unit);
std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n);
std::size_t count_unit(std::u16string_view text, char16_t unit);
std::size_t remove_unit(char16_t* text, std::size_t length, char16_t unit);
std::size_t keep_range(char16_t* text, std::size_t length, char16_t first, char16_t last);

}  // namespace scalar

// The ways in which count_unit goes about it, for the tests: with vectors of 16 bytes, and of 32, only where
// has_avx2().
namespace internal {

std::size_t count_unit_sse2(std::u16string_view text, char16_t unit);
std::size_t count_unit_avx2(std::u16string_view text, char16_t unit);

}  // namespace internal
}  // namespace corvelle
