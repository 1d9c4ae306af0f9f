// The model itself, by hand-worked examples: an oracle that is wrong proves nothing.
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "tests/reference/date_model.h"
#include "tests/reference/decimal_model.h"
#include "tests/reference/steps.h"
#include "tests/reference/text_model.h"

namespace corvelle::reference {
namespace {

using Text = std::u16string;

// The number of the error that `operation` ends in, 0 for none.
int error_of(const std::function<void()>& operation) {
  try {
    operation();
  } catch (const Error& error) {
    return error.number;
  }
  return 0;
}

TEST(ReferenceSteps, SearchFindsAnEmptyTextWithinTheTextOnly) {
  EXPECT_EQ(find_from(u"abc", u"", 1), 1);
  EXPECT_EQ(find_from(u"abc", u"", 3), 3);
  EXPECT_EQ(find_from(u"abc", u"", 4), 0);
  EXPECT_EQ(find_from(u"", u"", 1), 0);
  EXPECT_EQ(find_from(u"aaa", u"aa", 2), 2);
  EXPECT_EQ(find_from(u"aaa", u"aa", 3), 0);
  EXPECT_EQ(find_from(u"a", u"abc", 1), 0);
}

TEST(ReferenceWidth, CountsColumns) {
  EXPECT_EQ(sumByte_Pf(u""), 0);
  EXPECT_EQ(sumByte_Pf(u"中a"), 3);
  EXPECT_EQ(GetByte_Pf(u"abc", 99), 3);
  EXPECT_EQ(Get_StrWidth(u""), u"0");
  EXPECT_EQ(Get_StrWidth(u"中中中中中ab"), u"12");
  EXPECT_EQ(sumByte_Pf(Text(16384, u'中')), 32768);
  EXPECT_EQ(error_of([] { GetByte_Pf(Text(16384, u'中'), 0); }), 6);
  EXPECT_EQ(GetByte_Pf(Text(32766, u'a'), 0), 32766);
  EXPECT_EQ(error_of([] { sumByte_Pf(Text(32767, u'a')); }), 6);
}

TEST(ReferenceFields, SetStringPadsOrCuts) {
  EXPECT_EQ(Set_String1(u"ab", 5, 0), u"ab   ");
  EXPECT_EQ(Set_String1(u"ab", 5, 1), u"   ab");
  EXPECT_EQ(Set_String1(u"  ab  ", 4, 0), u"ab  ");
  EXPECT_EQ(Set_String1(u"abc", 3, 0), u"abc");
  EXPECT_EQ(Set_String1(u"abcd", 3, 0), u"abc");
  EXPECT_EQ(Set_String1(u"a中b", 2, 0), u"a中");
  EXPECT_EQ(Set_String1(u"xyz", 0, 0), u"x");
  EXPECT_EQ(Set_String1(u"xyz", -4, 0), u"x");
  EXPECT_EQ(Set_String1(u"", 3, 0), u"   ");
  EXPECT_EQ(Set_String1(u"", 0, 0), u"");
  EXPECT_EQ(error_of([] { Set_String1(u"", -1, 0); }), 5);
  EXPECT_EQ(Set_String1(Text(32766, u'a'), 32766, 0), Text(32766, u'a'));
  EXPECT_EQ(error_of([] { Set_String1(Text(32767, u'a'), 32767, 0); }), 6);
}

TEST(ReferenceFields, GetStringTakesAColumnRange) {
  EXPECT_EQ(Get_String(u"abcdef", 2, 4), u"bcd");
  EXPECT_EQ(Get_String(u"中文字", 1, 4), u"中文");
  EXPECT_EQ(Get_String(u"a中文", 1, 2), u"a中");
  EXPECT_EQ(Get_String(u"abc", 5, 9), u"");
  EXPECT_EQ(Get_String(u"abc", 2, 1), u"b");
  EXPECT_EQ(Get_String(u"abc", 2, 9), u"bc");
  EXPECT_EQ(error_of([] { Get_String(u"abc", 0, 2); }), 5);
  EXPECT_EQ(error_of([] { Get_String(u"abc", 1, 40000); }), 6);
  EXPECT_EQ(error_of([] { Get_String(u"abc", -32769, 2); }), 6);
  EXPECT_EQ(error_of([] { Get_String(u"中", 1, std::numeric_limits<std::int32_t>::min()); }), 6);
}

TEST(ReferenceFields, GetStrTakesTheNthField) {
  EXPECT_EQ(getStr_Pf(u"a,b,c,", 2, u","), u"b");
  EXPECT_EQ(getStr_Pf(u"a,b,c,", 1, u","), u"a");
  EXPECT_EQ(getStr_Pf(u"a,b,c,", 3, u","), u"c");
  EXPECT_EQ(error_of([] { getStr_Pf(u"a,b,c,", 4, u","); }), 5);
  EXPECT_EQ(error_of([] { getStr_Pf(u"a,b,c,", 0, u","); }), 5);
  EXPECT_EQ(error_of([] { getStr_Pf(u"a,b,c,", -1, u","); }), 5);
  EXPECT_EQ(getStr_Pf(u",x,", 1, u","), u"");
  EXPECT_EQ(getStr_Pf(u"a||b||", 2, u"||"), u"|b");
  EXPECT_EQ(getStr_Pf(u"abc", 1, u""), u"");
  EXPECT_EQ(getStr_Pf(u"abc", 3, u""), u"");
  EXPECT_EQ(error_of([] { getStr_Pf(u"abc", 4, u""); }), 5);
  EXPECT_EQ(getStrDo_Pf(u"a,b", 5, u","), u",");
  EXPECT_EQ(getStrDo_Pf(u"a,b,", 2, u","), u"b");
}

TEST(ReferenceFields, SpacesAndOtherThanLettersGo) {
  EXPECT_EQ(Center(u" a b "), u"ab");
  EXPECT_EQ(Center(u"a　b"), u"a　b");
  EXPECT_EQ(Center(u""), u"");
  EXPECT_EQ(GetStr(u"a-1 b"), u"ab");
  EXPECT_EQ(error_of([] { Center(Text(32767, u' ')); }), 6);
  EXPECT_EQ(error_of([] { GetStr(Text(32767, u'a')); }), 6);
}

TEST(ReferenceClassification, TestsAndNormalises) {
  EXPECT_TRUE(is_AlphaNum(u""));
  EXPECT_TRUE(is_AlphaNum(u"AbC"));
  EXPECT_FALSE(is_AlphaNum(u"abc1"));
  EXPECT_FALSE(is_AlphaNum(u"中"));
  EXPECT_FALSE(is_AlphaNum(Text(32767, u'1')));
  EXPECT_EQ(error_of([] { is_AlphaNum(Text(32767, u'a')); }), 6);
  EXPECT_EQ(error_of([] { is_AlphaNum(Text(32768, u'1')); }), 6);
  EXPECT_FALSE(Is_HuanZi(u""));
  EXPECT_FALSE(Is_HuanZi(u"a1B2"));
  EXPECT_TRUE(Is_HuanZi(u"a_b"));
  EXPECT_TRUE(Is_HuanZi(u"中"));
  EXPECT_EQ(getNum(u"a1b2c3"), u"123");
  EXPECT_EQ(getNum(u"-12.5"), u"125");
  EXPECT_EQ(getNum(u" 12"), u"1");
  EXPECT_EQ(getNum(u"  12"), u"");
  EXPECT_EQ(getNum(u"12  "), u"12");
  EXPECT_EQ(getNum(Text(10, u' ') + Text(32766, u'1')), Text(32756, u'1'));
  EXPECT_EQ(CharChange(u"三十五"), u"3105");
  EXPECT_EQ(CharChange(u"十二"), u"102");
  EXPECT_EQ(CharChange(u"1/2"), u"1、2");
  EXPECT_EQ(CharChange(u"一至三"), u"1-3");
  EXPECT_EQ(CharChange(u"A-b"), u"A-b");
}

TEST(ReferenceInitials, CallsTheStepForDoubleByteCharactersOnly) {
  Text seen;
  const auto step = [&](std::u16string_view character) {
    seen += character;
    return Text(4, u'p');
  };
  EXPECT_EQ(Get_String_PY(u"中a文b字", step), Text(10, u'p'));
  EXPECT_EQ(seen, u"中文字");
}

TEST(ReferenceSubstrings, Paths) {
  EXPECT_EQ(GetPath(u"C:\\data\\a.mdb"), u"C:\\data\\");
  EXPECT_EQ(GetPath(u"C:\\"), u"C:\\");
  EXPECT_EQ(GetPath(u"\\\\srv\\share\\f.txt"), u"\\\\srv\\share\\");
  EXPECT_EQ(GetPath(u"a/b"), u"");
  EXPECT_EQ(GetPath(Text(32765, u'a') + u""), u"");
  EXPECT_EQ(error_of([] { GetPath(Text(32767, u'a')); }), 6);
}

TEST(ReferenceSubstrings, Marks) {
  EXPECT_EQ(Get_Str(u"abc.def", u"."), u"abc.");
  EXPECT_EQ(Get_Str(u".abc.def", u"."), u".abc.");
  EXPECT_EQ(Get_Str(u"abc", u"."), u"");
  EXPECT_EQ(Get_Str(u"ab::cd", u"::"), u"ab::");
  EXPECT_EQ(Get_Str(u"abc", u""), u"a");
  EXPECT_EQ(Get_Str(u"a", u""), u"");
  EXPECT_EQ(Get_Str(u".x", u"."), u"");
  EXPECT_EQ(getString_P(u"x|abc|def", u"|", u"|"), u"abcdef");
  EXPECT_EQ(getString_P(u"k=v", u"=", u";"), u"v");
  EXPECT_EQ(getString_P(u"[ab]", u"[", u"]"), u"ab");
  EXPECT_EQ(getString_P(u"[]", u"[", u"]"), u"");
  EXPECT_EQ(getString_P(u"   ", u"[", u"]"), u"");
  EXPECT_EQ(getString_P(u"a[b[c]d", u"[", u"]"), u"bc");
  EXPECT_EQ(getString_P(u"abc", u"", u"c"), u"ab");
  EXPECT_EQ(getString_P(u"abc", u"a", u""), u"");
  EXPECT_EQ(getString_P(Text(32767, u'a'), u"a", u"x"), u"");
}

TEST(ReferenceSubstrings, Replacements) {
  EXPECT_EQ(Replace_Str(u"a-b-c", u"-", u"+"), u"a-b+c");
  EXPECT_EQ(Replace_Str(u"a+b-c", u"-", u"+"), u"a-b+c");
  EXPECT_EQ(Replace_Str(u"a+b", u"-", u"+"), u"a-b");
  EXPECT_EQ(Replace_Str(u"a-b", u"-", u"xy"), u"axyb");
  EXPECT_EQ(Replace_Str(u"abc", u"", u"-"), u"abc");
  EXPECT_EQ(Replace_Str(u"--", u"-", u"+"), u"-+");
  EXPECT_EQ(error_of([] { Replace_Str(Text(20000, u'-'), u"-", u"xy"); }), 6);
}

TEST(ReferenceSubstrings, Conversions) {
  EXPECT_EQ(ConversionStr_Long(u"abc"), u"abbccd");
  EXPECT_EQ(ConversionStr_Short(u"abbccd"), u"abc");
  EXPECT_EQ(ConversionStr_Short(u"abc"), u"ac");
  EXPECT_EQ(ConversionStr_Short(ConversionStr_Long(u"hello")), u"hello");
  EXPECT_EQ(ConversionStr_Long(Text(31, u'x')).substr(58), u"x\x7Fx€");
  EXPECT_EQ(ConversionStr_Long(Text(32670, u'x')).size(), 32670u + 32670u + 32670u - 158u);
  EXPECT_EQ(error_of([] { ConversionStr_Long(Text(32671, u'x')); }), 6);
}

TEST(ReferenceDates, Texts) {
  EXPECT_EQ(dateToStr_Pf(38719.646), u"20060102");
  EXPECT_EQ(dateToStr_Pf(-1.25), u"18991229");
  EXPECT_EQ(dateToStr_Pf(0), u"18991230");
  EXPECT_EQ(dateToStr_Pf(2958465.99), u"99991231");
  EXPECT_EQ(dateToStr_Pf(-657434.99), u"1000101");
  EXPECT_EQ(error_of([] { dateToStr_Pf(2958466); }), 5);
  EXPECT_EQ(error_of([] { dateToStr_Pf(-657435); }), 5);
  EXPECT_EQ(error_of([] { dateToStr_Pf(std::numeric_limits<double>::quiet_NaN()); }), 5);
  EXPECT_EQ(strDateFmt_Pf(u"20060102", u"年月日"), u"2006年01月02日");
  EXPECT_EQ(strDateFmt_Pf(u"20060102", u"-/x"), u"2006-01/02");
  EXPECT_EQ(strDateFmt_Pf(u"20060102", u"日"), u"2006日0102日");
  EXPECT_EQ(strDateFmt_Pf(u"20060102", u"年-月-日"), u"2006年01-02日");
  EXPECT_EQ(strDateFmt_Pf(u"20060102", u""), u"20060102");
  EXPECT_EQ(strDateFmt_Pf(u"200612", u"--"), u"200612");
}

TEST(ReferenceDates, DaysOfAMonth) {
  EXPECT_EQ(getDays_Pf(2000, 2, 2023, 5), 29);
  EXPECT_EQ(getDays_Pf(1900, 2, 2023, 5), 28);
  EXPECT_EQ(getDays_Pf(-4, 2, 2023, 5), 29);
  EXPECT_EQ(getDays_Pf(0, 2, 2024, 5), 29);
  EXPECT_EQ(getDays_Pf(2023, 0, 2024, 4), 30);
  EXPECT_EQ(getDays_Pf(2006, 13, 2024, 4), 31);
}

TEST(ReferenceDecimals, RoundsOnTheDigits) {
  const Symbols american{.grouping_separator = u",", .currency = u"$"};
  EXPECT_EQ(GetDecimalFmt(u"3.14159"), u"");
  EXPECT_EQ(GetDecimalFmt_4(u"3.14159", american), u"3.1416");
  EXPECT_EQ(GetDecimalFmt_8(u"3.14159", american), u"3.14159000");
  EXPECT_EQ(GetDecimalFmt_4(u"0.03125", american), u"0.0313");
  EXPECT_EQ(GetDecimalFmt_4(u"-0.03125", american), u"-0.0313");
  EXPECT_EQ(GetDecimalFmt_4(u"0.99995", american), u"1.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"99999999.99999", american), u"100000000.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"123456789012", american), u"123456789012.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"-0.00001", american), u"-0.0000");
  EXPECT_EQ(GetDecimalFmt_Bus(u"1.005", 2, american), u"1.01");
  EXPECT_EQ(GetDecimalFmt_Bus(u"0.125", 2, american), u"0.13");
  EXPECT_EQ(GetDecimalFmt_Bus(u"2.5", 9, american), u"2.5");
  EXPECT_EQ(GetDecimalFmt_4(u"1,234.5", Symbols{}), u"1234.5000");
  EXPECT_EQ(GetDecimalFmt_4(u"1,234.5", Symbols{.currency_grouping_separator = u"'"}), u"1,234.5");
  EXPECT_EQ(GetDecimalFmt_4(u"1.234,5", Symbols{.decimal_separator = u",", .grouping_separator = u"."}), u"1234,5000");
  EXPECT_EQ(GetDecimalFmt_Bus(u"1e300", 1, american).size(), 303u);
  EXPECT_EQ(GetDecimalFmt_4(u"1e-400", american), u"0.0000");
}

TEST(ReferenceDecimals, TakesWhatThePlatformDoes) {
  const Symbols american{.grouping_separator = u",", .currency = u"$"};
  for (const char16_t* number : {u"12", u" -3.5 ", u"1,234.5", u"1E3", u"(1)", u"$1", u"5-", u".5", u"5.", u"&HFF",
                                 u"1.7976931348623158e308", u"0e999", u"1e-99999999999999999999"}) {
    EXPECT_TRUE(is_number(number, american)) << ::testing::PrintToString(Text(number));
  }
  for (const char16_t* text : {u"", u" ", u"abc", u"12abc", u".", u",1", u"1e", u"--1", u"(1", u"1)", u"$1e3", u"&H",
                               u"&HFFFFFFFF", u"1.7976931348623159e308", u"1e309", u"１"}) {
    EXPECT_FALSE(is_number(text, american)) << ::testing::PrintToString(Text(text));
  }
}

}  // namespace
}  // namespace corvelle::reference
