#include "text/pinyin.h"

#include <array>
#include <cstdint>

#include "base/ansi_code.h"
#include "base/counter.h"

namespace corvelle {

Text Get_Char_PY(std::u16string_view /*character*/) { return {}; }

Text Get_String_PY(std::u16string_view strCon, FunctionRef<Text(std::u16string_view)> get_char_py) {
  constexpr Argument kStrCon{u"Get_String_PY", u"strCon"};
  const std::int16_t length = length16(strCon, kStrCon);
  std::array<char16_t, 10> code{};
  std::size_t written = 0;
  for (std::size_t i = 0; i < strCon.size(); ++i) {
    if (!is_double_byte(strCon[i])) continue;
    const Text piece = get_char_py(strCon.substr(i, 1));
    written += piece.view().copy(code.data() + written, code.size() - written);
  }
  step_past_end(length, kStrCon);
  return Text({code.data(), written});
}

}  // namespace corvelle
