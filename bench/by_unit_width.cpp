// What the operations find in base/vectors/width_count.cpp, which is compiled with other options than code_units.cpp.
#include <algorithm>

#include "base/ansi_code.h"
#include "base/vectors/width_count.h"

namespace corvelle {

std::size_t double_byte_count(std::u16string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), is_double_byte));
}

}  // namespace corvelle
