#include "base/slice.h"

#include <algorithm>

#include "base/vectors/code_units.h"

namespace corvelle {

std::u16string_view trimmed(std::u16string_view text) {
  const auto first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::u16string_view substring(std::u16string_view text, std::int64_t position, std::int64_t length) {
  const auto offset = static_cast<std::uint64_t>(position - 1);
  if (offset >= text.size()) return {};
  return text.substr(static_cast<std::size_t>(offset),
                     static_cast<std::size_t>(std::min<std::int64_t>(length, static_cast<std::int64_t>(text.size()))));
}

std::int64_t position_of(std::u16string_view text, std::u16string_view wanted, std::int64_t start) {
  if (start < 1 || start > static_cast<std::int64_t>(text.size())) return 0;
  if (wanted.empty()) return start;
  for (auto offset = static_cast<std::size_t>(start - 1);; ++offset) {
    const std::size_t found = find_unit(text.substr(offset), wanted[0]);
    if (found == kNowhere) return 0;
    offset += found;
    if (text.substr(offset).starts_with(wanted)) return static_cast<std::int64_t>(offset) + 1;
  }
}

}  // namespace corvelle
