#include "data/computer_name.h"

#include <algorithm>

namespace corvelle {

Text computer_name_in(std::u16string_view buffer, std::uint32_t size) {
  const std::u16string_view kept = buffer.substr(0, size);
  Text name = Text::of_length(kept.size());
  const char16_t* end = std::remove_copy(kept.begin(), kept.end(), name.data(), u'\0');
  name.keep_first(static_cast<std::size_t>(end - name.data()));
  return name;
}

}  // namespace corvelle
