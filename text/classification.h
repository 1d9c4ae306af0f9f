// text/classification.h - what kind of characters a text holds, and their plain forms.
//
// Raises, all four: overflow (6) above 32,767 characters before any is looked at, and at exactly 32,767 when the walk
// runs to the end of the text without a result.
#pragma once

#include <string_view>

#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// Whether every character of `CheckString` is a letter: its ANSI character code, after upper-casing, is 65 to 90.
// Kept: digits are no letters here, whatever the name says. The letters are A-Z, a-z and the six that code page 936
// writes as a letter: Ð ð Ý ý Þ þ. The empty text has no other character: true.
//   is_AlphaNum(u"AbC") == true, is_AlphaNum(u"a1") == false
// A character that is no letter ends the walk early: 32,767 characters with such a one give false, not overflow.
Result<bool> is_AlphaNum(std::u16string_view CheckString);

// Whether `CheckString` holds a character that is neither a letter, as above, nor a digit: one whose ANSI character
// code, after upper-casing, is 48 to 57. The digits are 0-9 and the three that code page 936 writes as a digit: ¹ ² ³.
// Kept: it is no test for Chinese characters, whatever the name says; a space or a punctuation mark does as well.
//   Is_HuanZi(u"ABC123") == false, Is_HuanZi(u"AB C") == true, Is_HuanZi(u"中") == true, Is_HuanZi(u"") == false
// Such a character ends the walk early, as above.
Result<bool> Is_HuanZi(std::u16string_view CheckString);

// The digits 0-9 among the first n characters of `NewStr`, in their order, where n is the length of the trimmed text.
// Full-width digits, signs and separators are dropped.
// Kept: n is counted in the trimmed text, but the scan starts at the untrimmed text's first character, so each leading
// space hides one character at the end. The overflow bound is on n.
//   getNum(u"a1b2") == u"12", getNum(u"-12.5") == u"125", getNum(u" 12") == u"1", getNum(u"12  ") == u"12"
Result<Text> getNum(std::u16string_view NewStr);

// `StrChar` with Chinese numerals and full-width digits as ASCII digits, the separators , / \ of either width as '、',
// and '至', '到' and '－' as a hyphen; every other character as it is.
// Kept: characters are replaced one by one, and '十' is always "10": 十二 gives 102.
//   CharChange(u"一至三") == u"1-3", CharChange(u"1/2") == u"1、2", CharChange(u"三十五") == u"3105"
Result<Text> CharChange(std::u16string_view StrChar);

}  // namespace corvelle
