// tests/cases/decimal_cases.h - GetDecimalFmt, GetDecimalFmt_4, GetDecimalFmt_8 and GetDecimalFmt_Bus, for every
// runner. The locale is Chinese (mainland): "." before decimals, "," between groups, "¥" for money.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/support/operation_case.h"

namespace corvelle::testing {

inline std::vector<OperationCase> decimal_cases() {
  using namespace std::string_view_literals;
  const auto repeated = [](std::size_t count, char16_t unit) { return std::u16string(count, unit); };
  const auto joined = [](std::initializer_list<std::u16string_view> parts) {
    std::u16string whole;
    for (const auto part : parts) whole += part;
    return whole;
  };
  const std::u16string hundred_digits =
      u"1234567890123456789012345678901234567890123456789012345678901234567890"
      u"123456789012345678901234567890";
  const std::u16string largest_double = joined({u"17976931348623157", repeated(292, u'0')});
  std::vector<OperationCase> cases = {
      {"it gives the empty text for a number", u"GetDecimalFmt", {text(u"3.14159")}, text(u"")},
      {"it gives the empty text for any text", u"GetDecimalFmt", {text(u"abc")}, text(u"")},
      {"it gives the empty text for the empty text", u"GetDecimalFmt", {text(u"")}, text(u"")},

      {"the eighth place of a short number is a zero", u"GetDecimalFmt_8", {text(u"3.14159")}, text(u"3.14159000")},
      {"the ninth place rounds the eighth", u"GetDecimalFmt_8", {text(u"0.123456785")}, text(u"0.12345679")},
      {"the empty text is no number for eight places", u"GetDecimalFmt_8", {text(u"")}, text(u"")},
      {"what is no number has no eight places", u"GetDecimalFmt_8", {text(u"abc")}, text(u"abc")},

      {"index 1", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(1)}, text(u"2.5")},
      {"index 2", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(2)}, text(u"2.50")},
      {"index 3", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(3)}, text(u"2.500")},
      {"index 4", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(4)}, text(u"2.5000")},
      {"index 5", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(5)}, text(u"2.50000")},
      {"index 6", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(6)}, text(u"2.500000")},
      {"index 7", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(7)}, text(u"2.5000000")},
      {"index 8", u"GetDecimalFmt_Bus", {text(u"2.5"), int16(8)}, text(u"2.50000000")},
      {"index 0 selects nothing", u"GetDecimalFmt_Bus", {text(u"3.14159"), int16(0)}, text(u"3.14159")},
      {"index 9 selects nothing", u"GetDecimalFmt_Bus", {text(u"3.14159"), int16(9)}, text(u"3.14159")},
      {"a negative index selects nothing", u"GetDecimalFmt_Bus", {text(u"3.14159"), int16(-1)}, text(u"3.14159")},
      {"the smallest index selects nothing", u"GetDecimalFmt_Bus", {text(u" 1 "), int16(-32768)}, text(u" 1 ")},
      {"the largest index selects nothing", u"GetDecimalFmt_Bus", {text(u" 1 "), int16(32767)}, text(u" 1 ")},
      {"what is no number comes back for any index", u"GetDecimalFmt_Bus", {text(u"abc"), int16(2)}, text(u"abc")},
      {"half a tenth rounds up", u"GetDecimalFmt_Bus", {text(u"0.25"), int16(1)}, text(u"0.3")},
      {"half a tenth rounds away from zero", u"GetDecimalFmt_Bus", {text(u"-0.25"), int16(1)}, text(u"-0.3")},
      {"half a hundredth rounds away from even", u"GetDecimalFmt_Bus", {text(u"0.125"), int16(2)}, text(u"0.13")},
      {"halves round on the digits, not on a binary fraction",
       u"GetDecimalFmt_Bus",
       {text(u"1.005"), int16(2)},
       text(u"1.01")},
      {"just below a half rounds down",
       u"GetDecimalFmt_Bus",
       {text(u"1.00499999999999999999999"), int16(2)},
       text(u"1.00")},
      {"an integer gets its places", u"GetDecimalFmt_Bus", {text(u"1234"), int16(3)}, text(u"1234.000")},
      {"a hundred digits are kept",
       u"GetDecimalFmt_Bus",
       {text(joined({hundred_digits, u".15"})), int16(1)},
       text(joined({hundred_digits, u".2"}))},
      {"a text of 40,000 characters comes back for index 0",
       u"GetDecimalFmt_Bus",
       {text(repeated(40000, u'1')), int16(0)},
       text(repeated(40000, u'1'))},
  };

  // Of GetDecimalFmt_4 there are many; a row is a reason, a text and what becomes of it.
  struct FourPlaces {
    const char* reason;
    std::u16string text;
    std::u16string expected;
  };
  const std::u16string unchanged = u"unchanged";
  const FourPlaces rows[] = {
      {"the fifth place rounds the fourth", u"3.14159", u"3.1416"},
      {"an integer gets four places", u"2", u"2.0000"},
      {"a fraction below one gets an integer digit", u"0.5", u"0.5000"},
      {"a number may begin with its decimal separator", u".5", u"0.5000"},
      {"a number may end with it", u"5.", u"5.0000"},
      {"every integer digit is written", u"123456789012", u"123456789012.0000"},
      {"half of the last place rounds away from even", u"0.03125", u"0.0313"},
      {"half of the last place rounds away from zero", u"-0.03125", u"-0.0313"},
      {"a carry runs into the integer part", u"0.99995", u"1.0000"},
      {"a carry widens the integer part", u"99999999.99999", u"100000000.0000"},
      {"below a half nothing is carried", u"0.99994999999999", u"0.9999"},
      {"a negative number keeps its sign", u"-0.5", u"-0.5000"},
      {"leading zeros go", u"00012", u"12.0000"},
      {"trailing zeros beyond the places go", u"1.50000000", u"1.5000"},
      {"half of the last place rounds up from nothing", u"0.00005", u"0.0001"},
      {"less rounds to zero", u"0.00004999", u"0.0000"},
      {"a place further down rounds to zero too", u"0.000009", u"0.0000"},
      {"zero", u"0", u"0.0000"},
      {"zeros only", u"000.000", u"0.0000"},
      {"negative zero keeps its sign", u"-0", u"-0.0000"},
      {"what rounds to zero keeps its sign", u"-0.00001", u"-0.0000"},
      {"what rounds to the last place keeps its sign", u"-0.00005", u"-0.0001"},

      {"the empty text is no number", u"", unchanged},
      {"words are no numbers", u"abc", unchanged},
      {"a number with a letter behind it is none", u"12abc", unchanged},
      {"a number with a letter before it is none", u"a12", unchanged},
      {"blanks alone are no number", u"  ", unchanged},
      {"a decimal separator alone is no number", u".", unchanged},
      {"a sign alone is no number", u"-", unchanged},
      {"two decimal separators make no number", u"1.2.3", unchanged},
      {"a number with a blank inside is none", u"1 2", unchanged},

      {"blanks around a number do not count", u" -3.5 ", u"-3.5000"},
      {"tabs and line ends are blanks", u"\t\r\n12\v\f", u"12.0000"},
      {"the ideographic space is a blank",
       u"\u3000"
       u"12\u3000",
       u"12.0000"},
      {"the no-break space is a blank",
       u"\u00A0"
       u"12",
       u"12.0000"},
      {"the zero-width space is none",
       u"\u200B"
       u"12",
       unchanged},
      {"a blank may stand behind the sign", u"- 12", u"-12.0000"},
      {"a positive sign is not written", u"+12", u"12.0000"},
      {"a sign may stand behind the number", u"12-", u"-12.0000"},
      {"and be separated from it", u"12 -", u"-12.0000"},
      {"a positive sign may stand behind too", u"12+", u"12.0000"},
      {"one sign of each kind may stand before", u"+-12", u"-12.0000"},
      {"two negative signs before make no number", u"--12", unchanged},
      {"a negative sign on both sides makes no number", u"-12-", unchanged},
      {"grouping separators do not count", u"1,234.5", u"1234.5000"},
      {"wherever they stand", u"1,2,3", u"123.0000"},
      {"twice in a row", u"1,,2", u"12.0000"},
      {"at the end", u"1,", u"1.0000"},
      {"among the decimals", u"1.2,345", u"1.2345"},
      {"but not at the beginning", u",1", unchanged},

      {"an exponent", u"1E3", u"1000.0000"},
      {"an exponent in lower case", u"1e3", u"1000.0000"},
      {"an exponent with a sign", u"1.5e+3", u"1500.0000"},
      {"a negative exponent", u"25e-4", u"0.0025"},
      {"a negative exponent down to the rounded place", u"5e-5", u"0.0001"},
      {"an exponent's leading zeros", u"1e00003", u"1000.0000"},
      {"zero with an exponent", u"0e3", u"0.0000"},
      {"zero with an exponent beyond every double", u"0e999999999", u"0.0000"},
      {"an exponent mark without digits", u"1e", unchanged},
      {"an exponent's sign without digits", u"1e+", unchanged},
      {"an exponent without a number", u"e3", unchanged},
      {"a blank before an exponent", u"1 e3", unchanged},
      {"a fractional exponent", u"1e3.5", unchanged},
      {"two exponents", u"1e3e3", unchanged},
      {"another exponent mark", u"1d3", unchanged},
      {"a negative sign behind an exponent", u"1e3-", u"-1000.0000"},
      {"digits behind an exponent's grouping separator continue the number before it", u"1e3,5", u"15000.0000"},

      {"parentheses are a negative sign", u"(12)", u"-12.0000"},
      {"with blanks", u"( 12 )", u"-12.0000"},
      {"with another negative sign", u"(-12)", u"-12.0000"},
      {"around zero", u"(0)", u"-0.0000"},
      {"unclosed", u"(12", unchanged},
      {"closed by a negative sign", u"(-12", u"-12.0000"},
      {"closed by a negative sign behind", u"(12-", u"-12.0000"},
      {"unopened", u"12)", unchanged},
      {"in pairs", u"((12))", unchanged},
      {"around nothing", u"()", unchanged},
      {"the currency symbol before", u"¥1,234.5", u"1234.5000"},
      {"the currency symbol behind", u"12¥", u"12.0000"},
      {"the currency symbol behind the sign", u"-¥12", u"-12.0000"},
      {"the currency symbol before the sign", u"¥-12", u"-12.0000"},
      {"the currency symbol twice before", u"¥¥12", unchanged},
      {"the currency symbol before an exponent", u"¥1e3", unchanged},
      {"the currency symbol in full width", u"￥12", unchanged},
      {"another currency", u"€12", unchanged},
      {"a percent sign", u"12%", unchanged},

      {"hexadecimal bits", u"&HFF", u"255.0000"},
      {"in lower case", u"&hff", u"255.0000"},
      {"with a letter that marks exponents elsewhere", u"&H1e3", u"483.0000"},
      {"octal bits", u"&O17", u"15.0000"},
      {"zero bits", u"&H0", u"0.0000"},
      {"the most bits without the sign bit", u"&H7FFFFFFF", u"2147483647.0000"},
      {"the sign bit alone", u"&H80000000", u"-2147483648.0000"},
      {"beyond", u"&H80000001", unchanged},
      {"more bits than 64", u"&H10000000000000000", unchanged},
      {"leading zero bits", u"&H00000000000000000000FF", u"255.0000"},
      {"bits ignore their sign", u"-&HFF", u"255.0000"},
      {"bits within parentheses", u"(&HFF)", u"255.0000"},
      {"no bits", u"&H", unchanged},
      {"no hexadecimal digit", u"&HG", unchanged},
      {"no octal digit", u"&O8", unchanged},
      {"a prefix of another language", u"0x10", unchanged},
      {"a prefix without a letter", u"&17", unchanged},

      {"full-width digits are none", u"１２", unchanged},
      {"Chinese numerals are none", u"十二", unchanged},
      {"a character outside code page 936 is none", u"1Ä", unchanged},
      {"a full-width comma groups nothing", u"1，2", unchanged},
      {"a typographic minus is no sign",
       u"\u2212"
       u"1",
       unchanged},
      {"NUL is a character, and none of a number's", std::u16string(u"12\0"sv), unchanged},
      {"NUL does not end a text", std::u16string(u"12\0x"sv), unchanged},
      {"NUL before a number",
       std::u16string(u"\0"
                      u"12"sv),
       unchanged},
      {"a lone surrogate", std::u16string(u"12\xD800"sv), unchanged},
      {"a date", u"2006-01-02", unchanged},
      {"a time", u"12:30", unchanged},
      {"what other languages call infinity", u"Inf", unchanged},
      {"and what they call no number", u"NaN", unchanged},

      {"a large number gets all its digits", u"1e300", joined({u"1", repeated(300, u'0'), u".0000"})},
      {"the largest double", u"1.7976931348623157e308", joined({largest_double, u".0000"})},
      {"a larger number that rounds to it", u"1.7976931348623158e308",
       joined({u"17976931348623158", repeated(292, u'0'), u".0000"})},
      {"what rounds to infinity is no number", u"1.7976931348623159e308", unchanged},
      {"beyond the largest double", u"1e309", unchanged},
      {"beyond it on the negative side", u"-1e309", unchanged},
      {"a mantissa of many digits beyond it", u"1000e306", unchanged},
      {"a mantissa of many places below it", u"0.001e310", joined({u"1", repeated(307, u'0'), u".0000"})},
      {"an exponent of nine digits", u"1e999999999", unchanged},
      {"an exponent beyond 32 bits", u"1e99999999999", unchanged},
      {"an exponent beyond 64 bits", u"1e99999999999999999999999999", unchanged},
      {"below the smallest double is zero", u"1e-400", u"0.0000"},
      {"and keeps its sign", u"-1e-400", u"-0.0000"},
      {"a negative exponent beyond 64 bits", u"1e-99999999999999999999999999", u"0.0000"},
      {"309 nines are beyond", repeated(309, u'9'), unchanged},
      {"308 nines are not", repeated(308, u'9'), joined({repeated(308, u'9'), u".0000"})},
      {"308 nines with a carry widen to 309 digits", joined({repeated(308, u'9'), u".99995"}),
       joined({u"1", repeated(308, u'0'), u".0000"})},
      {"40,000 digits are beyond", repeated(40000, u'1'), unchanged},
      {"40,000 digits that an exponent brings back", joined({repeated(40000, u'1'), u"e-39999"}), u"1.1111"},
      {"40,000 zeros are zero", repeated(40000, u'0'), u"0.0000"},
      {"40,000 zeros before a digit do not count", joined({repeated(40000, u'0'), u"7"}), u"7.0000"},
      {"40,000 decimals round at the fourth", joined({u"0.00005", repeated(40000, u'0')}), u"0.0001"},
      {"40,000 decimals just below a half", joined({u"0.00004", repeated(40000, u'9')}), u"0.0000"},
      {"40,000 zeros after the decimal separator that an exponent makes up for",
       joined({u"0.", repeated(40000, u'0'), u"12e40001"}), u"1.2000"},
      {"40,000 negative signs before", joined({repeated(40000, u'-'), u"1"}), unchanged},
      {"40,000 negative signs behind", joined({u"1", repeated(40000, u'-')}), u"-1.0000"},
      {"40,000 parentheses", repeated(40000, u'('), unchanged},
      {"40,000 blanks", joined({repeated(40000, u' '), u"1", repeated(40000, u' ')}), u"1.0000"},
      {"40,000 grouping separators", joined({u"1", repeated(40000, u',')}), u"1.0000"},
      {"40,000 digits of an exponent", joined({u"1e", repeated(40000, u'9')}), unchanged},
      {"40,000 hexadecimal digits", joined({u"&H", repeated(40000, u'F')}), unchanged},
      {"32,766 letters", repeated(32766, u'a'), unchanged},
      {"32,767 letters: nothing counts in 16 bits here", repeated(32767, u'a'), unchanged},
      {"32,768 letters", repeated(32768, u'a'), unchanged},
  };
  for (const FourPlaces& row : rows) {
    const auto& expected = row.expected == unchanged ? row.text : row.expected;
    cases.push_back({row.reason, u"GetDecimalFmt_4", {text(row.text)}, text(expected)});
  }
  for (int index = 1; index <= 8; ++index) {
    cases.push_back(
        {"the empty text is no number for any index", u"GetDecimalFmt_Bus", {text(u""), int16(index)}, text(u"")});
  }
  return cases;
}

}  // namespace corvelle::testing
