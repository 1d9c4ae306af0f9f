// text/pinyin.h - a short code from the Chinese characters of a text.
#pragma once

#include <string_view>

#include "base/function_ref.h"
#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// The piece that `character` contributes to a code. Kept: it has no table and knows no pinyin; the piece is always
// empty.
Text Get_Char_PY(std::u16string_view character);

// The pieces of the double-byte characters of `strCon`, joined and cut after 10 characters. `get_char_py`, Get_Char_PY
// or what stands in for it, is called once for each double-byte character, in order, beyond the 10 characters too, with
// a text of that character alone; its error ends the call. Single-byte characters contribute nothing.
//   Get_String_PY(u"中a文", get_char_py) == the pieces of 中 and 文
// Kept: with Get_Char_PY the code is empty for every text, whatever the name says.
// Raises overflow (6) above 32,767 characters before the first call, and at exactly 32,767 after the last.
Result<Text> Get_String_PY(std::u16string_view strCon, FunctionRef<Result<Text>(std::u16string_view)> get_char_py);

}  // namespace corvelle
