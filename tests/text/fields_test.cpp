#include "text/fields.h"

#include <string>
#include <vector>

#include "base/ansi_code.h"
#include "tests/cases/fields_cases.h"
#include "tests/support/runtime_error.h"
#include "text/classification.h"

namespace corvelle {
namespace {

using ::testing::ElementsAre;
using testing::native;

Result<Text> letters_of(std::u16string_view Str) {
  return GetStr(Str, [](std::u16string_view character) { return is_AlphaNum(character); });
}

TEST(Fields, NativeCases) {
  testing::run_natively(testing::fields_cases(), {{u"Set_String1", native(&Set_String1)},
                                                  {u"Get_String", native(&Get_String)},
                                                  {u"getStr_Pf", native(&getStr_Pf)},
                                                  {u"getStrDo_Pf", native(&getStrDo_Pf)},
                                                  {u"Center", native(&Center)},
                                                  {u"GetStr", native(&letters_of)}});
}

TEST(SetString1, SaysWhatWasAsked) {
  EXPECT_RUNTIME_ERROR_SAYING(Set_String1(u" ", -3, 0), ErrorNumber::invalid_argument,
                              u"Set_String1: lngLen is -3, and there is no text to cut");
  EXPECT_RUNTIME_ERROR_SAYING(
      Set_String1(std::u16string(40000, u'a'), 50000, 0), ErrorNumber::overflow,
      u"Set_String1: strName takes 32767 columns or more to reach lngLen, 50000; at most 32766 can be counted");
}

TEST(GetString, SaysWhatWasAsked) {
  EXPECT_RUNTIME_ERROR_SAYING(Get_String(u"abc", 0, 2), ErrorNumber::invalid_argument,
                              u"Get_String: intBegin is 0; positions start at 1");
  EXPECT_RUNTIME_ERROR_SAYING(Get_String(u"abc", -40000, 2), ErrorNumber::overflow,
                              u"Get_String: intBegin gives -40000, which does not fit in 16 bits");
  EXPECT_RUNTIME_ERROR_SAYING(Get_String(u"abc", 2, 40000), ErrorNumber::overflow,
                              u"Get_String: LngEnd is 40000; the walk there from position 2 passes position 32767");
  EXPECT_RUNTIME_ERROR_SAYING(Get_String(u"中", 1, std::numeric_limits<std::int32_t>::min()), ErrorNumber::overflow,
                              u"Get_String: LngEnd is -2147483648 and cannot move nearer by a two-column character");
}

TEST(GetStrPf, SaysWhichFieldWasAskedForAndHowManyThereAre) {
  EXPECT_RUNTIME_ERROR_SAYING(getStr_Pf(u"a,b,c", 3, u","), ErrorNumber::invalid_argument,
                              u"getStr_Pf: Num is 3; Str has 2 fields ended by \",\"");
  EXPECT_RUNTIME_ERROR_SAYING(getStr_Pf(u"a||", 0, u"||"), ErrorNumber::invalid_argument,
                              u"getStr_Pf: Num is 0; Str has 1 field ended by \"||\"");
  EXPECT_RUNTIME_ERROR_SAYING(getStr_Pf(u"abc", 4, u""), ErrorNumber::invalid_argument,
                              u"getStr_Pf: Num is 4; Str has 3 fields ended by \"\"");
}

TEST(GetStr, AsksOnceForEachCharacterInOrder) {
  std::vector<std::u16string> asked;
  const Result<Text> result = GetStr(u"a中", [&](std::u16string_view character) {
    asked.emplace_back(character);
    return character == u"中";
  });
  EXPECT_THAT(asked, ElementsAre(u"a", u"中"));
  EXPECT_EQ(result, u"中");
}

TEST(GetStr, EndsWithTheErrorOfTheCalledOperation) {
  int calls = 0;
  const auto failing = [&](std::u16string_view) -> Result<bool> {
    if (++calls == 3) return Error(ErrorNumber::type_mismatch, {u"is_AlphaNum", u"CheckString"}, {u"is broken"});
    return true;
  };
  EXPECT_RUNTIME_ERROR_SAYING(GetStr(std::u16string(32767, u'a'), failing), ErrorNumber::type_mismatch,
                              u"is_AlphaNum: CheckString is broken");
  EXPECT_EQ(calls, 3) << "the error comes before the step past the end";
}

TEST(GetStr, AsksNothingWhereTheLengthOverflows) {
  int calls = 0;
  const auto counting = [&](std::u16string_view) { return ++calls > 0; };
  EXPECT_RUNTIME_ERROR(GetStr(std::u16string(32768, u'a'), counting), ErrorNumber::overflow);
  EXPECT_EQ(calls, 0);
  EXPECT_RUNTIME_ERROR_SAYING(GetStr(std::u16string(32767, u'a'), counting), ErrorNumber::overflow,
                              u"GetStr: Str has 32767 characters; at most 32766 can be counted");
  EXPECT_EQ(calls, 32767) << "every character was asked for before the step past the last";
}

TEST(Center, SaysHowLongTheTextIs) {
  EXPECT_RUNTIME_ERROR_SAYING(Center(std::u16string(32767, u' ')), ErrorNumber::overflow,
                              u"Center: Str has 32767 characters; at most 32766 can be counted");
}

// A mixed text of `length` characters in which no stretch of columns equals its neighbour.
std::u16string mixed_text(std::size_t length) {
  std::u16string text;
  for (std::size_t i = 0; text.size() < length; ++i)
    text += i * i % 7 < 3 ? u'中' : static_cast<char16_t>(u'a' + i % 26);
  return text;
}

// Walks as the operations are defined, a character and a counter step at a time.
std::u16string cut_by_walking(std::u16string_view text, std::int64_t width) {
  std::u16string result;
  std::int64_t counter = 1;
  for (const char16_t character : text) {
    result += character;
    counter += is_double_byte(character) ? 2 : 1;
    if (counter > width) break;
  }
  return result;
}

TEST(Columns, EveryWidthCutsWhereAWalkDoes) {
  const std::u16string text = mixed_text(1300);
  for (std::int32_t width = 1; width < 1800; ++width) {
    const std::u16string expected = cut_by_walking(text, width);
    ASSERT_EQ(Set_String1(text, width, 0), expected) << width;
    ASSERT_EQ(Get_String(text, 1, width), expected) << width;
    ASSERT_EQ(Get_String(u"xy" + text, 3, width + 2), expected) << width;
  }
}

}  // namespace
}  // namespace corvelle
