#include "text/display_width.h"

#include <cstddef>

#include "base/counter.h"
#include "base/vectors/width_count.h"

namespace corvelle {
namespace {

// The columns of `text`, which a 16-bit counter can walk. In 32 bits, since a wider integer becomes a double by
// arithmetic, where a host that rounds down gets -0.
std::int32_t columns_of(std::u16string_view text) {
  return static_cast<std::int32_t>(text.size() + double_byte_count(text));
}

// Of a text that is both too long and too wide, the length is what the error speaks of.
Result<std::int16_t> columns16_of(std::u16string_view text, Argument where) {
  if (Error error = too_long(text, where)) return error;
  return narrow16(columns_of(text), where);
}

}  // namespace

Result<double> sumByte_Pf(std::u16string_view vStr) {
  if (Error error = too_long(vStr, {u"sumByte_Pf", u"vStr"})) return error;
  return static_cast<double>(columns_of(vStr));
}

Result<std::int16_t> GetByte_Pf(std::u16string_view vStr, std::int16_t /*vInt*/) {
  return columns16_of(vStr, {u"GetByte_Pf", u"vStr"});
}

Result<Text> Get_StrWidth(std::u16string_view strCon) {
  Result<std::int16_t> columns = columns16_of(strCon, {u"Get_StrWidth", u"strCon"});
  if (columns.failed()) return columns.take_error();
  return Text(decimal_text(*columns));
}

}  // namespace corvelle
