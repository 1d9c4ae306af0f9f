#include "text/classification.h"

#include <map>
#include <string>

#include "base/ansi_code.h"
#include "base/upper_case.h"
#include "tests/cases/classification_cases.h"
#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

using testing::native;

TEST(Classification, NativeCases) {
  testing::run_natively(testing::classification_cases(), {{u"is_AlphaNum", native(&is_AlphaNum)},
                                                          {u"Is_HuanZi", native(&Is_HuanZi)},
                                                          {u"getNum", native(&getNum)},
                                                          {u"CharChange", native(&CharChange)}});
}

// The code of `character` once upper-cased, the platform's own way. GNU's C library upper-cases two characters more
// than Windows does; there they are taken as Windows has them.
std::int16_t upper_case_code(char16_t character) {
#ifndef _WIN32
  if (character == u'ı' || character == u'ſ') return ansi_code(character);
#endif
  return ansi_code(upper_case(character));
}

TEST(Classification, AgreesWithThePlatformOnEveryCharacter) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    const std::int16_t code = upper_case_code(character);
    const bool letter = code >= 65 && code <= 90;
    const bool digit = code >= 48 && code <= 57;
    ASSERT_EQ(is_AlphaNum({&character, 1}), letter) << "U+" << std::hex << unit;
    ASSERT_EQ(Is_HuanZi({&character, 1}), !letter && !digit) << "U+" << std::hex << unit;
  }
}

TEST(CharChange, ChangesNoOtherCharacter) {
  const std::u16string changed = u"零一二三四五六七八九十０１２３４５６７８９,，＼\\/／至到－";
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    const Text result = testing::value_of(CharChange({&character, 1}));
    ASSERT_EQ(result == std::u16string_view(&character, 1), changed.find(character) == std::u16string::npos)
        << "U+" << std::hex << unit;
  }
}

TEST(GetNum, KeepsNoOtherCharacter) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    ASSERT_EQ(testing::value_of(getNum({&character, 1})).empty(), character < u'0' || character > u'9')
        << "U+" << std::hex << unit;
  }
}

TEST(Classification, OverflowNamesOperationAndLength) {
  const std::u16string text(32768, u'a');
  EXPECT_RUNTIME_ERROR_SAYING(is_AlphaNum(text), ErrorNumber::overflow,
                              u"is_AlphaNum: CheckString has 32768 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(Is_HuanZi(text), ErrorNumber::overflow,
                              u"Is_HuanZi: CheckString has 32768 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(getNum(text), ErrorNumber::overflow,
                              u"getNum: NewStr has 32768 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(CharChange(text), ErrorNumber::overflow,
                              u"CharChange: StrChar has 32768 characters; at most 32766 can be counted");
}

}  // namespace
}  // namespace corvelle
