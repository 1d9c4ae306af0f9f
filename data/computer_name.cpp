#include "data/computer_name.h"

#include <algorithm>

#include "base/slice.h"

namespace corvelle {

Result<Text> computer_name_in(std::u16string_view buffer, std::uint32_t size) {
  const std::u16string_view kept = first_of(buffer, size);
  Text name = Text::of_length(kept.size());
  if (name.failed()) return name;
  const char16_t* end = std::remove_copy(kept.begin(), kept.end(), name.data(), u'\0');
  name.keep_first(static_cast<std::size_t>(end - name.data()));
  return name;
}

}  // namespace corvelle
