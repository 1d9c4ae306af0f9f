#include "text/pinyin.h"

#include <string>
#include <vector>

#include "tests/cases/pinyin_cases.h"
#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

using ::testing::ElementsAre;
using testing::native;

Result<Text> code_of(std::u16string_view strCon) {
  return Get_String_PY(strCon, [](std::u16string_view character) { return Get_Char_PY(character); });
}

TEST(Pinyin, NativeCases) { testing::run_natively(testing::pinyin_cases(), {{u"Get_String_PY", native(&code_of)}}); }

TEST(GetCharPY, GivesNothingForEveryCharacter) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    ASSERT_TRUE(Get_Char_PY({&character, 1}).empty()) << unit;
  }
}

TEST(GetStringPY, AsksOnceForEachDoubleByteCharacterInOrder) {
  std::vector<std::u16string> asked;
  const Result<Text> code = Get_String_PY(u"a中1Ａ €文ä\xD800，中", [&](std::u16string_view character) {
    asked.emplace_back(character);
    return Text(character);
  });
  EXPECT_THAT(asked, ElementsAre(u"中", u"Ａ", u"文", u"，", u"中"));
  EXPECT_EQ(code, u"中Ａ文，中") << "the pieces stand as they came";
}

TEST(GetStringPY, CutsAfterTenCharactersButAsksOn) {
  int calls = 0;
  const auto three_at_a_time = [&](std::u16string_view) {
    ++calls;
    return Text(u"xyz");
  };
  EXPECT_EQ(Get_String_PY(u"中中中", three_at_a_time), u"xyzxyzxyz");
  EXPECT_EQ(Get_String_PY(u"中中中中中", three_at_a_time), u"xyzxyzxyzx");
  EXPECT_EQ(calls, 8);
}

TEST(GetStringPY, EndsWithTheErrorOfTheCalledStep) {
  int calls = 0;
  const auto failing = [&](std::u16string_view) -> Result<Text> {
    if (++calls == 3) return Error(ErrorNumber::type_mismatch, {u"Get_Char_PY", u"character"}, {u"is broken"});
    return Text();
  };
  EXPECT_RUNTIME_ERROR_SAYING(Get_String_PY(std::u16string(32767, u'中'), failing), ErrorNumber::type_mismatch,
                              u"Get_Char_PY: character is broken");
  EXPECT_EQ(calls, 3) << "the error comes before the step past the end";
}

TEST(GetStringPY, OverflowsBeforeTheFirstCallOrAfterTheLast) {
  int calls = 0;
  const auto counting = [&](std::u16string_view) {
    ++calls;
    return Text();
  };
  EXPECT_RUNTIME_ERROR_SAYING(Get_String_PY(std::u16string(32768, u'中'), counting), ErrorNumber::overflow,
                              u"Get_String_PY: strCon has 32768 characters; at most 32766 can be counted");
  EXPECT_EQ(calls, 0);
  EXPECT_RUNTIME_ERROR_SAYING(Get_String_PY(std::u16string(32767, u'中'), counting), ErrorNumber::overflow,
                              u"Get_String_PY: strCon has 32767 characters; at most 32766 can be counted");
  EXPECT_EQ(calls, 32767);
}

}  // namespace
}  // namespace corvelle
