#include "text/pinyin.h"

#include "base/ansi_code.h"
#include "base/counter.h"

namespace corvelle {

Text Get_Char_PY(std::u16string_view /*character*/) { return {}; }

Result<Text> Get_String_PY(std::u16string_view strCon, FunctionRef<Result<Text>(std::u16string_view)> get_char_py) {
  constexpr Argument kStrCon{u"Get_String_PY", u"strCon"};
  if (Error error = too_long_to_begin(strCon, kStrCon)) return error;
  ShortText<10> code;
  for (const char16_t& character : strCon) {
    if (!is_double_byte(character)) continue;
    Result<Text> piece = get_char_py({&character, 1});
    if (piece.failed()) return piece;
    code.append(*piece);
  }
  if (Error error = too_long(strCon, kStrCon)) return error;
  return Text(code);
}

}  // namespace corvelle
