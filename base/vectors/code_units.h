// base/vectors/code_units.h - finding, counting and copying the code units of a text, many at a time.
//
// Offsets are 0-based. Each function has a twin of the same meaning in scalar.h.
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

// The offset of the last `unit` in `text`, kNowhere where there is none.
//   find_last_unit(u"a,b,c", u',') == 3
std::size_t find_last_unit(std::u16string_view text, char16_t unit);

// The offset of the `n`-th `unit` in `text`, counted from 1; kNowhere where there are fewer, and for an `n` of 0.
//   find_nth_unit(u"a,b,c", u',', 2) == 3
std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n);

// How often `unit` stands in `text`.
std::size_t count_unit(std::u16string_view text, char16_t unit);

// Copies `text` without its `unit`s to `to`, which has room for all of `text` and is no part of it, and gives the
// number of units that it copied; what is behind them may be overwritten, too.
std::size_t copy_without(std::u16string_view text, char16_t unit, char16_t* to);

// Copies the units from `first` to `last` likewise.
std::size_t copy_range(std::u16string_view text, char16_t first, char16_t last, char16_t* to);

// Copies the first, third, fifth … unit of `text` to `to`, which is no part of it.
void copy_every_second(std::u16string_view text, char16_t* to);

// Copies `text` to `to` with two units behind each: `first`, and the unit at the same place of `seconds`.
//   of u"abc", u'-' and u"123": u"a-1b-2c-3"
void copy_with_pairs(std::u16string_view text, char16_t first, const char16_t* seconds, char16_t* to);

// The ways in which count_unit goes about it, for the tests: with vectors of 16 bytes, and of 32, only where
// has_avx2().
namespace internal {

std::size_t count_unit_sse2(std::u16string_view text, char16_t unit);
std::size_t count_unit_avx2(std::u16string_view text, char16_t unit);

}  // namespace internal
}  // namespace corvelle
