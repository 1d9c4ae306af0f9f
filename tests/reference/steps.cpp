#include "tests/reference/steps.h"

#include "tests/reference/code_page.h"

namespace corvelle::reference {

std::u16string_view trimmed(std::u16string_view text) {
  while (!text.empty() && text.front() == u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  return text;
}

std::u16string_view substring(std::u16string_view text, std::int64_t position, std::int64_t count) {
  if (position < 1 || count < 0) throw Error{kInvalidArgument};
  if (position > length(text)) return {};
  return text.substr(static_cast<std::size_t>(position - 1), static_cast<std::size_t>(count));
}

std::int64_t find_from(std::u16string_view text, std::u16string_view wanted, std::int64_t start) {
  if (wanted.empty()) return start >= 1 && start <= length(text) ? start : 0;
  for (std::int64_t position = start; position + length(wanted) - 1 <= length(text); ++position) {
    if (substring(text, position, length(wanted)) == wanted) return position;
  }
  return 0;
}

std::int16_t code_of(std::u16string_view character) {
  if (character.empty()) throw Error{kInvalidArgument};
  return ansi_code(character.front());
}

}  // namespace corvelle::reference
