#include "text/display_width.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "base/counter.h"
#include "base/vectors/width_count.h"

namespace corvelle {
namespace {

// The columns of `text`, which a 16-bit counter can walk.
std::int64_t columns_of(std::u16string_view text, Argument where) {
  return static_cast<std::int64_t>(walkable(text, where).size() + double_byte_count(text));
}

// The same as a 16-bit total. Of a text that is both too long and too wide, the length is what the error speaks of.
std::int16_t columns16_of(std::u16string_view text, Argument where) { return narrow16(columns_of(text, where), where); }

// `number`, not negative, in decimal digits.
Text digits_of(std::int16_t number) {
  std::array<char, 8> digits{};
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  Text text = Text::of_length(static_cast<std::size_t>(end - digits.data()));
  std::copy(static_cast<const char*>(digits.data()), end, text.data());
  return text;
}

}  // namespace

double sumByte_Pf(std::u16string_view vStr) { return static_cast<double>(columns_of(vStr, {u"sumByte_Pf", u"vStr"})); }

std::int16_t GetByte_Pf(std::u16string_view vStr, std::int16_t /*vInt*/) {
  return columns16_of(vStr, {u"GetByte_Pf", u"vStr"});
}

Text Get_StrWidth(std::u16string_view strCon) { return digits_of(columns16_of(strCon, {u"Get_StrWidth", u"strCon"})); }

}  // namespace corvelle
