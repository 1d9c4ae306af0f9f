#include "text/width_count.h"

#include <algorithm>

#include "text/ansi_code.h"

namespace corvelle {

std::size_t double_byte_count(std::u16string_view text) { return internal::double_byte_count_by_character(text); }

std::size_t internal::double_byte_count_by_character(std::u16string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), is_double_byte));
}

}  // namespace corvelle
