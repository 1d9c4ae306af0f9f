// tests/cases/width_cases.h - what sumByte_Pf, GetByte_Pf and Get_StrWidth must give.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/operation_case.h"

namespace corvelle::testing {

inline std::vector<OperationCase> width_cases() {
  std::vector<OperationCase> cases;
  const auto all_three = [&cases](const char* reason, std::u16string_view content, int columns) {
    cases.push_back({reason, u"sumByte_Pf", {text(content)}, number(columns)});
    cases.push_back({reason, u"GetByte_Pf", {text(content), int16(0)}, int16(columns)});
    cases.push_back({reason, u"Get_StrWidth", {text(content)}, text(decimal_text(columns))});
  };
  all_three("an empty text has no width", u"", 0);
  all_three("one column for each ASCII letter", u"ab", 2);
  all_three("a double-byte character takes two columns, a letter one", u"中a", 3);
  all_three("spaces count wherever they stand", u" a ", 3);
  all_three("the ideographic space is a double-byte character", u"\u3000", 2);
  all_three("full-width forms take two columns", u"ＡＢ１２，", 10);
  all_three("Chinese punctuation takes two columns", u"“《、。》”", 12);
  all_three("the first and the last Chinese character of the code page, and their neighbours", u"\u4DFF一龥\u9FA6", 6);
  all_three("the user-defined area takes two columns, what follows it one", u"\uE000\uE864\uE865", 5);
  all_three("the euro sign is one byte", u"€", 1);
  all_three("the unit that stands for the byte FF takes one column", u"\uF8F5", 1);
  all_three("the pound and yen signs and the middle dot are written as two bytes", u"£¥·", 6);
  all_three("a look-alike in one byte takes one column", u"\u00AA\u00B2", 2);
  all_three("a look-alike in two bytes takes two columns", u"\u00C0", 2);
  all_three("a character that the code page lacks becomes a question mark", u"\u0E01", 1);
  all_three("an emoji is two code units that the code page lacks", u"😀", 2);
  all_three("a lone high surrogate takes one column", std::u16string(1, char16_t{0xD83D}), 1);
  all_three("a lone low surrogate takes one column", std::u16string(1, char16_t{0xDE00}), 1);
  all_three("NUL is an ordinary character", std::u16string_view(u"a\0b", 3), 3);
  all_three("nothing is normalised: a letter and its combining accent count apart", u"e\u0301", 2);
  all_three("two digits", u"一二三四五六", 12);
  all_three("the longest text that can be walked", std::u16string(32766, u'a'), 32766);
  all_three("the widest total", std::u16string(16383, u'中').append(u"a"), 32767);

  const auto each_overflows = [&cases](const char* reason, const std::u16string& content) {
    cases.push_back({reason, u"sumByte_Pf", {text(content)}, ErrorNumber::overflow});
    cases.push_back({reason, u"GetByte_Pf", {text(content), int16(0)}, ErrorNumber::overflow});
    cases.push_back({reason, u"Get_StrWidth", {text(content)}, ErrorNumber::overflow});
  };
  each_overflows("the step past the last of 32,767 characters overflows", std::u16string(32767, u'a'));
  each_overflows("a length of 32,768 does not fit the counter", std::u16string(32768, u'a'));
  each_overflows("so does none beyond 65,536", std::u16string(65537, u'a'));

  const std::u16string too_wide(16384, u'中');
  cases.push_back({"a double counts past 32,767", u"sumByte_Pf", {text(too_wide)}, number(32768)});
  cases.push_back({"the widest text at all", u"sumByte_Pf", {text(std::u16string(32766, u'中'))}, number(65532)});
  cases.push_back({"the 16-bit total overflows", u"GetByte_Pf", {text(too_wide), int16(0)}, ErrorNumber::overflow});
  cases.push_back({"the 16-bit total overflows", u"Get_StrWidth", {text(too_wide)}, ErrorNumber::overflow});
  for (const int ignored : {99, -1, 32767, -32768}) {
    cases.push_back({"vInt is ignored", u"GetByte_Pf", {text(u"abc"), int16(ignored)}, int16(3)});
  }
  return cases;
}

}  // namespace corvelle::testing
