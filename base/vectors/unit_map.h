// base/vectors/unit_map.h - copying a text whose code units become others, many at a time.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvelle {

namespace internal {
// Not constexpr: a map that comes here does not compile.
void no_places_for_these_units();
}  // namespace internal

// What the units of a text become: at most 32 of them another one, and one of these two; the rest stay.
//   constexpr UnitMap kMap({{u"/\\", u"、"}, {u"十", u"10"}});
// The compiler arranges the units so that each has a place of its own: the lower byte is shifted by a number that hangs
// on the third hexadecimal digit, and the lowest four bits and the highest one are the place. One look there tells
// whether a unit is one of them.
class UnitMap {
 public:
  struct Row {
    std::u16string_view units;  // any of these
    std::u16string_view become;
  };

  template <std::size_t N>
  consteval explicit UnitMap(const Row (&rows)[N]) {
    std::array<std::size_t, kDigits> left = {};
    for (const Row& row : rows) {
      for (const char16_t unit : row.units) ++left[digit_of(unit)];
    }
    if (!arrange(rows, rows + N, left)) internal::no_places_for_these_units();
  }

  // The first of what `unit` becomes.
  constexpr char16_t first_of(char16_t unit) const {
    const std::size_t place = place_of(unit);
    const auto change = static_cast<unsigned>(high_changes_[place] << 8 | low_changes_[place]);
    return static_cast<char16_t>(unit_at(place) == unit ? unit ^ change : unit);
  }

  // The unit that becomes two, the second of these, and in which bits the two differ.
  constexpr char16_t lengthened() const { return lengthened_; }
  constexpr char16_t second() const { return second_; }
  constexpr char16_t difference() const { return difference_; }

  // For vectors: the shift of each digit, and by the place the unit there and in which bits it changes.
  constexpr const std::uint8_t* shifts() const { return shifts_.data(); }
  constexpr const std::uint8_t* low_bytes() const { return low_bytes_.data(); }
  constexpr const std::uint8_t* high_bytes() const { return high_bytes_.data(); }
  constexpr const std::uint8_t* low_changes() const { return low_changes_.data(); }
  constexpr const std::uint8_t* high_changes() const { return high_changes_.data(); }

 private:
  static constexpr std::size_t kDigits = 16;
  static constexpr std::size_t kPlaces = 32;

  static constexpr std::size_t digit_of(char16_t unit) { return unit >> 8 & 0xFU; }

  constexpr std::size_t place_of(char16_t unit) const {
    const unsigned shifted = unit + shifts_[digit_of(unit)];
    return (shifted & 0x0FU) | (shifted & 0x80U) >> 3;
  }

  constexpr char16_t unit_at(std::size_t place) const {
    return static_cast<char16_t>(high_bytes_[place] << 8 | low_bytes_[place]);
  }

  // Finds shifts by which the units find free places, those of the digit that has most `left` first.
  constexpr bool arrange(const Row* rows, const Row* end, std::array<std::size_t, kDigits> left) {
    auto* const most = std::max_element(left.begin(), left.end());
    if (*most == 0) return true;
    *most = 0;
    const auto digit = static_cast<std::size_t>(most - left.begin());
    const UnitMap before = *this;
    for (unsigned shift = 0; shift <= 0xFF; ++shift) {
      *this = before;
      shifts_[digit] = static_cast<std::uint8_t>(shift);
      if (place_all(rows, end, digit) && arrange(rows, end, left)) return true;
    }
    return false;
  }

  constexpr bool place_all(const Row* rows, const Row* end, std::size_t digit) {
    for (const Row* row = rows; row != end; ++row) {
      for (const char16_t unit : row->units) {
        if (digit_of(unit) == digit && !place(unit, row->become)) return false;
      }
    }
    return true;
  }

  // False where the place is taken.
  constexpr bool place(char16_t unit, std::u16string_view become) {
    const std::size_t place = place_of(unit);
    if (unit_at(place) != u'\0') return false;
    const auto change = static_cast<unsigned>(unit ^ become[0]);
    low_bytes_[place] = static_cast<std::uint8_t>(unit);
    high_bytes_[place] = static_cast<std::uint8_t>(unit >> 8);
    low_changes_[place] = static_cast<std::uint8_t>(change);
    high_changes_[place] = static_cast<std::uint8_t>(change >> 8);
    if (become.size() == 2) {
      lengthened_ = unit;
      second_ = become[1];
      difference_ = static_cast<char16_t>(become[0] ^ become[1]);
    }
    return true;
  }

  std::array<std::uint8_t, kDigits> shifts_ = {};
  std::array<std::uint8_t, kPlaces> low_bytes_ = {};
  std::array<std::uint8_t, kPlaces> high_bytes_ = {};
  std::array<std::uint8_t, kPlaces> low_changes_ = {};
  std::array<std::uint8_t, kPlaces> high_changes_ = {};
  char16_t lengthened_ = u'\0';
  char16_t second_ = u'\0';
  char16_t difference_ = u'\0';
};

// The length of `text` once `map` is applied to it.
std::size_t mapped_length(std::u16string_view text, const UnitMap& map);

// Copies `text` to `to`, which has room for its mapped_length and is no part of it, each unit as `map` has it. Gives
// the number of units that it wrote.
//   of u"二十/", with the map above: u"二10、"
std::size_t copy_mapped(std::u16string_view text, const UnitMap& map, char16_t* to);

namespace internal {

struct Copied {
  std::size_t read;
  std::size_t written;
};

// Copies blocks of 32 units likewise, all but the last ones, with 32-byte vectors; only where has_avx2(). Takes no
// view, whose functions would be compiled for such processors.
Copied copy_mapped_avx2(const char16_t* text, std::size_t length, const UnitMap& map, char16_t* to);

}  // namespace internal
}  // namespace corvelle
