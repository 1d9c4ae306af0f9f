// tests/reference/arguments.h - arguments that bite: every kind of code unit, lengths and numbers around every bound.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tests/reference/choices.h"

namespace corvelle::testing {

// A text, mostly short; once in some thousand times one around 32,767 characters.
std::u16string any_text(Choices& choices);

// A text that stands in some relation to `text`: a part of it, one or two of its characters, empty, or any other.
std::u16string separator(Choices& choices, std::u16string_view text);

// A text with backslashes. A long one has but few, for the folders are cut out one by one, each from the beginning.
std::u16string path(Choices& choices);

// A text that is a number, or just misses being one.
std::u16string numeric_text(Choices& choices);

// An integer around `length`, around 0, or around an end of its type's range.
std::int16_t any_int16(Choices& choices, std::size_t length);
std::int32_t any_int32(Choices& choices, std::size_t length);

// A date: whole days and fractions within the range, around its ends, and what is no date at all.
double any_date(Choices& choices);

}  // namespace corvelle::testing
