// text/width_count.h - how many characters of a text take two columns.
#pragma once

#include <cstddef>
#include <string_view>

namespace corvelle {

// The number of double-byte characters in `text`, of any length: double_byte_count(u"中a文") == 2.
std::size_t double_byte_count(std::u16string_view text);

namespace internal {

// The same, one character after the other: the twin that double_byte_count is compared with.
std::size_t double_byte_count_by_character(std::u16string_view text);

}  // namespace internal
}  // namespace corvelle
