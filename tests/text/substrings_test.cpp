#include "text/substrings.h"

#include <string>
#include <tuple>
#include <vector>

#include "tests/cases/substrings_cases.h"
#include "tests/support/runtime_error.h"
#include "text/fields.h"

namespace corvelle {
namespace {

using ::testing::ElementsAre;
using testing::native;

Result<Text> folder_of(std::u16string_view PathFile) {
  return GetPath(PathFile, [](std::u16string_view text, std::int16_t number, std::u16string_view separator) {
    return getStr_Pf(text, number, separator);
  });
}

TEST(Substrings, NativeCases) {
  testing::run_natively(
      testing::substrings_cases(),
      {{u"GetPath", native(&folder_of)}, {u"Get_Str", native(&Get_Str)}, {u"getString_P", native(&getString_P)}});
}

TEST(GetPath, AsksForEachFieldInOrder) {
  std::vector<std::tuple<std::u16string, int, std::u16string>> asked;
  const Result<Text> folder =
      GetPath(u"a\\b\\c", [&](std::u16string_view text, std::int16_t number, std::u16string_view separator) {
        asked.emplace_back(text, number, separator);
        return Text(u"field");
      });
  EXPECT_THAT(asked, ElementsAre(std::tuple(u"a\\b\\c\\", 1, u"\\"), std::tuple(u"a\\b\\c\\", 2, u"\\")));
  EXPECT_EQ(folder, u"field\\field\\") << "the folder is made of what the called operation gives";
}

TEST(GetPath, AsksForNothingWithoutABackslash) {
  const auto unexpected = [](std::u16string_view, std::int16_t, std::u16string_view) -> Text {
    ADD_FAILURE() << "called";
    return {};
  };
  EXPECT_EQ(GetPath(u"file.txt", unexpected), u"");
  EXPECT_RUNTIME_ERROR(GetPath(std::u16string(32766, u'\\'), unexpected), ErrorNumber::overflow);
}

TEST(GetPath, EndsWithTheErrorOfTheCalledOperation) {
  const auto failing = [](std::u16string_view, std::int16_t number, std::u16string_view) -> Result<Text> {
    if (number == 2) return Error(ErrorNumber::invalid_argument, {u"getStr_Pf", u"Num"}, {u"is broken"});
    return Text();
  };
  EXPECT_RUNTIME_ERROR_SAYING(GetPath(u"a\\b\\c\\", failing), ErrorNumber::invalid_argument,
                              u"getStr_Pf: Num is broken");
}

TEST(GetPath, TakesApartAndJoinsManyFields) {
  const std::u16string backslashes(32000, u'\\');
  EXPECT_EQ(folder_of(backslashes), backslashes);
}

TEST(Substrings, OverflowNamesOperationAndLength) {
  EXPECT_RUNTIME_ERROR_SAYING(
      folder_of(std::u16string(32766, u'a')), ErrorNumber::overflow,
      u"GetPath: PathFile with a backslash behind it has 32767 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(Get_Str(std::u16string(32767, u'a'), u"a"), ErrorNumber::overflow,
                              u"Get_Str: Str has 32767 characters; at most 32766 can be counted");
}

}  // namespace
}  // namespace corvelle
