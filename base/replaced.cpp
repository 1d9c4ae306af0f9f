#include "base/replaced.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "base/vectors/code_units.h"

namespace corvelle {
namespace {

// The length of a text in which each of `count` characters makes way for `replacement_length`. Computed in 64 bits,
// since the product of two lengths need not fit in the machine's own; more than any memory has where it does not.
std::size_t replaced_length(std::size_t length, std::size_t count, std::size_t replacement_length) {
  const std::uint64_t result = std::uint64_t{length} - count + std::uint64_t{count} * std::uint64_t{replacement_length};
  return static_cast<std::size_t>(std::min<std::uint64_t>(result, std::numeric_limits<std::size_t>::max()));
}

}  // namespace

Text replaced(std::u16string_view text, char16_t unit, std::u16string_view replacement) {
  if (replacement.size() == 1) {
    Text result = Text::of_length(text.size());
    if (result.failed()) return result;
    std::transform(text.begin(), text.end(), result.data(),
                   [unit, other = replacement[0]](char16_t c) { return c == unit ? other : c; });
    return result;
  }
  Text result = Text::of_length(replaced_length(text.size(), count_unit(text, unit), replacement.size()));
  if (result.failed()) return result;
  char16_t* end = result.data();
  for (std::size_t found = find_unit(text, unit); found != kNowhere; found = find_unit(text, unit)) {
    end = std::copy_n(text.begin(), found, end);
    end = std::copy(replacement.begin(), replacement.end(), end);
    text.remove_prefix(found + 1);
  }
  std::copy(text.begin(), text.end(), end);
  return result;
}

}  // namespace corvelle
