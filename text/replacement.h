// text/replacement.h - characters of a text replaced, filled in and left out.
#pragma once

#include <string_view>

#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// `strExpression` with the last character `Str1` replaced by `Str2`, and every other `Str2` turned back into `Str1`.
//   Replace_Str(u"a-b-c", u"-", u"+") == u"a-b+c", Replace_Str(u"a+b", u"-", u"+") == u"a-b"
// Kept: only single characters are compared, in two passes. The first replaces every `Str1` by `Str2`; the second turns
// every `Str2`, save at the position of the last `Str1`, into `Str1`. So a `Str2` of another length leaves every `Str1`
// replaced, and a `Str1` of another length is never found but comes in for every `Str2`.
//   Replace_Str(u"a-b", u"-", u"xy") == u"axyb", Replace_Str(u"a-b", u"xy", u"-") == u"axyb"
// Raises overflow (6) at 32,767 characters or more, and where the first pass makes that many.
Result<Text> Replace_Str(std::u16string_view strExpression, std::u16string_view Str1, std::u16string_view Str2);

// `StrTmp` with a filler behind every character: behind the i-th stands what the code 97 + i stands for.
//   ConversionStr_Long(u"abc") == u"abbccd"
// The fillers are b to z, then { | } ~ and the control character of code 127 up to position 30; € at 31; '?' from 32 to
// 157, since a lead byte alone is no character; U+F8F5 at 158. From 159 on a code has two bytes and so two characters.
// Raises overflow (6) above 32,670 characters: 97 + i does not fit in 16 bits then.
Result<Text> ConversionStr_Long(std::u16string_view StrTmp);

// The characters of `StrTmp` at odd positions.
//   ConversionStr_Short(u"abbccd") == u"abc", ConversionStr_Short(u"abc") == u"ac"
// Undoes ConversionStr_Long for up to 158 characters, to which it gives one-character fillers.
// Raises overflow (6) at 32,767 characters or more.
Result<Text> ConversionStr_Short(std::u16string_view StrTmp);

}  // namespace corvelle
