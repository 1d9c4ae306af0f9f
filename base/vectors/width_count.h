// base/vectors/width_count.h - how many characters of a text take two columns.
#pragma once

#include <cstddef>
#include <string_view>

namespace corvelle {

// The number of double-byte characters in `text`, of any length: double_byte_count(u"中a文") == 2.
std::size_t double_byte_count(std::u16string_view text);

// The ways in which double_byte_count goes about it; all give the same. Which one it takes depends on the processor and
// on the length alone.
namespace internal {

// Character by character: the twin that the others are compared with.
std::size_t double_byte_count_by_character(std::u16string_view text);

// With the 16-byte vectors that every processor of the supported systems has.
std::size_t double_byte_count_sse2(std::u16string_view text);

// With 32-byte vectors; only where has_avx2(). Takes no view, whose functions would be compiled for such processors.
std::size_t double_byte_count_avx2(const char16_t* characters, std::size_t length);

}  // namespace internal
}  // namespace corvelle
