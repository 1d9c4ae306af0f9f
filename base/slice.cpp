#include "base/slice.h"

#include <algorithm>

#include "base/vectors/code_units.h"

namespace corvelle {

std::u16string_view trimmed(std::u16string_view text) {
  while (text.starts_with(u' ')) text.remove_prefix(1);
  while (text.ends_with(u' ')) text.remove_suffix(1);
  return text;
}

std::u16string_view substring(std::u16string_view text, std::int64_t position, std::int64_t length) {
  const std::int64_t left = static_cast<std::int64_t>(text.size()) - (position - 1);
  if (left <= 0) return {};
  return {text.data() + (position - 1), static_cast<std::size_t>(std::min(length, left))};
}

std::int64_t position_of(std::u16string_view text, std::u16string_view wanted, std::int64_t start) {
  if (start < 1 || start > static_cast<std::int64_t>(text.size())) return 0;
  if (wanted.empty()) return start;
  for (std::u16string_view rest = behind(text, static_cast<std::size_t>(start - 1));; rest.remove_prefix(1)) {
    const std::size_t found = find_unit(rest, wanted[0]);
    if (found == kNowhere) return 0;
    rest.remove_prefix(found);
    if (begins_with(rest, wanted)) return rest.data() - text.data() + 1;
  }
}

}  // namespace corvelle
