// text/fields.h - fields of fixed width in display columns, and fields that end with a separator.
//
// Positions are 1-based and count characters. Columns are those of display_width.h: a double-byte character takes two.
// The only blank is the space, U+0020: an ideographic space (U+3000) is a two-column character like any other, and is
// neither trimmed nor removed.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/function_ref.h"
#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// `strName`, trimmed, padded with spaces to `lngLen` columns: behind it when `Flag` is 0, before it for any other.
//   Set_String1(u" ab ", 5, 0) == u"ab   ", Set_String1(u"ab", 5, 1) == u"   ab"
// A text at least `lngLen` columns wide gives its shortest leading part that reaches them, and never none.
// Kept: a two-column character is never cut in half, so that part may be one column wider than asked.
//   Set_String1(u"abcd", 3, 0) == u"abc", Set_String1(u"a中b", 2, 0) == u"a中", Set_String1(u"xyz", -4, 0) == u"x"
// Raises invalid argument (5) when nothing is left after trimming and `lngLen` is negative; overflow (6) when the part
// that it would give, before padding, is wider than 32,766 columns. A longer text that is cut in time is no error.
Result<Text> Set_String1(std::u16string_view strName, std::int32_t lngLen, std::int16_t Flag);

// The characters of `strName` from position `intBegin` on, until they are `LngEnd` - `intBegin` + 1 columns wide.
//   Get_String(u"abcdef", 2, 4) == u"bcd", Get_String(u"中文字", 1, 4) == u"中文"
// Kept: the begin is a position, only the end is counted in columns. A two-column character in the last column is taken
// whole, and an end before the begin gives one character.
//   Get_String(u"a中文", 1, 2) == u"a中", Get_String(u"abc", 2, 1) == u"b", Get_String(u"abc", 2, 9) == u"bc"
// Empty when `intBegin` lies beyond the text, whatever the number. Otherwise raises invalid argument (5) for an
// `intBegin` of -32,768 to 0; overflow (6) for one outside 16 bits, where the walk to the end, which goes on past the
// end of the text, reaches position 32,767, and where `LngEnd` is the least 32-bit number and a two-column character
// moves it.
Result<Text> Get_String(std::u16string_view strName, std::int32_t intBegin, std::int32_t LngEnd);

// The `Num`-th of the fields of `Str` that `sFlag` ends, counted from 1.
//   getStr_Pf(u"a,b,c,", 2, u",") == u"b", getStr_Pf(u",x,", 1, u",") == u""
// Kept: the search goes on one character after the start of a separator, so that longer separators may overlap, and
// every field but the first begins there: it keeps the rest of the separator at its front.
//   getStr_Pf(u"a||b||", 2, u"||") == u"|b"
// An empty separator is found at every character: each field up to the length of `Str` is empty.
// Raises invalid argument (5) for a field that no separator ends, and for a `Num` below 1.
Result<Text> getStr_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag);

// The same field; `sFlag` itself where getStr_Pf raises an error.
//   getStrDo_Pf(u"a,b", 1, u",") == u"a", getStrDo_Pf(u"a,b", 5, u",") == u","
Result<Text> getStrDo_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag);

// `Str` without its spaces.
// Kept: all are removed, at the ends and between; nothing is centred, whatever the name says.
//   Center(u" a b ") == u"ab"
// Raises overflow (6) at 32,767 characters or more.
Result<Text> Center(std::u16string_view Str);

// The characters of `Str` for which `is_alpha_num`, the is_AlphaNum of text/classification.h or what stands in for it,
// is true. It is called once for each character, in order, with a text of that character alone; its error ends the
// call.
//   GetStr(u"a-1 b", …) == u"ab"
// Raises overflow (6) above 32,767 characters before the first call, and at exactly 32,767 after the last.
Result<Text> GetStr(std::u16string_view Str, FunctionRef<Result<bool>(std::u16string_view)> is_alpha_num);

}  // namespace corvelle
