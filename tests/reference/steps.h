// tests/reference/steps.h - the single steps that the reference model is made of, each taken literally.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace corvelle::reference {

// An operation ended in the run-time error of this number.
struct Error {
  int number;
};

inline constexpr int kInvalidArgument = 5;
inline constexpr int kOverflow = 6;

// A signed integer whose every value is checked: one outside its range ends the operation in overflow.
template <class Integer>
class Checked {
 public:
  Checked(std::int64_t value) : value_(value) {  // NOLINT(google-explicit-constructor): steps assign plain numbers
    if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max()) {
      throw Error{kOverflow};
    }
  }
  operator std::int64_t() const { return value_; }  // NOLINT(google-explicit-constructor)

 private:
  std::int64_t value_;
};

using Int16 = Checked<std::int16_t>;
using Int32 = Checked<std::int32_t>;

inline std::int64_t length(std::u16string_view text) { return static_cast<std::int64_t>(text.size()); }

// `text` without its leading and trailing spaces.
std::u16string_view trimmed(std::u16string_view text);

// The `count` characters of `text` from `position` on, fewer where it ends first.
std::u16string_view substring(std::u16string_view text, std::int64_t position, std::int64_t count);

// The character at `position` as a text of its own; the empty text beyond the end.
inline std::u16string_view character_at(std::u16string_view text, std::int64_t position) {
  return substring(text, position, 1);
}

// The position of the first `wanted` in `text` at or after `start`, 0 where there is none.
std::int64_t find_from(std::u16string_view text, std::u16string_view wanted, std::int64_t start);

// The ANSI character code of a text's first character.
std::int16_t code_of(std::u16string_view character);

}  // namespace corvelle::reference
