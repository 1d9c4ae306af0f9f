#include "base/ansi_code.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/base/code_page.h"

namespace corvelle {
namespace {

constexpr std::int32_t kUnits = 65536;
constexpr std::int32_t kCodes = 32768;

TEST(AnsiCode, IsTheByteOfASingleByteCharacter) {
  for (char16_t character = 0; character < 0x80; ++character) EXPECT_EQ(ansi_code(character), character);
  EXPECT_EQ(ansi_code(u'€'), 0x80);
  EXPECT_EQ(ansi_code(u'\uF8F5'), 0xFF);
}

TEST(AnsiCode, IsNegativeForADoubleByteCharacter) {
  EXPECT_EQ(ansi_code(u'丂'), -32448) << "the first two bytes, 8140";
  EXPECT_EQ(ansi_code(u'中'), -10544);
  EXPECT_EQ(ansi_code(u'Ａ'), -23615) << "a full-width letter";
  EXPECT_EQ(ansi_code(u'\uE4C5'), -258)
      << "the private-use area is the code page's user-defined area, down to its last two bytes, FEFE";
}

TEST(AnsiCode, IsAQuestionMarkForWhatTheCodePageLacks) {
  EXPECT_EQ(ansi_code(u'\u0E01'), u'?');
  EXPECT_EQ(ansi_code(char16_t{0xD83D}), u'?') << "a lone high surrogate";
  EXPECT_EQ(ansi_code(char16_t{0xDE00}), u'?') << "a lone low surrogate";
  EXPECT_EQ(ansi_code(u'\uFFFF'), u'?');
}

TEST(AnsiCode, LiesBetweenTheBoundsAndIsNegativeForTwoBytes) {
  for (std::int32_t unit = 0; unit < kUnits; ++unit) {
    const std::int16_t code = ansi_code(static_cast<char16_t>(unit));
    EXPECT_EQ(is_double_byte(static_cast<char16_t>(unit)), code < 0) << std::hex << unit;
    EXPECT_TRUE(code >= 0 ? code <= 0xFF : code >= -32448 && code <= -258) << std::hex << unit;
  }
}

TEST(Decoded, IsOneCharacterForOneByte) {
  EXPECT_EQ(decoded(0).view(), std::u16string_view(u"\0", 1));
  EXPECT_EQ(decoded(0x7F).view(), u"\u007F");
  EXPECT_EQ(decoded(0x80).view(), u"€");
  EXPECT_EQ(decoded(0x81).view(), u"?");
  EXPECT_EQ(decoded(0xFE).view(), u"?");
  EXPECT_EQ(decoded(0xFF).view(), u"\uF8F5");
}

TEST(Decoded, IsTwoCharactersForTwoBytes) {
  EXPECT_EQ(decoded(0x100).view(), std::u16string_view(u"\u0001\0", 2));
  EXPECT_EQ(decoded(0x6162).view(), u"ab");
  EXPECT_EQ(decoded(0x6181).view(), u"a?");
  EXPECT_EQ(decoded(32767).view(), u"\u007F\uF8F5");
}

// The platform's conversion is what the table was written from; under Wine it must be met exactly.
// Elsewhere iconv stands in, another implementation of the code page.
TEST(AnsiCode, AgreesWithTheOtherImplementation) {
  const testing::CodePage code_page;
  std::int32_t differences = 0;
  for (std::int32_t unit = 0; unit < kUnits; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    const std::int16_t expected = code_page.code_of(character);
    if (ansi_code(character) == expected) continue;
    ++differences;
    if (testing::CodePage::kDifferences == 0) ADD_FAILURE() << std::hex << unit << " is " << expected;
  }
  EXPECT_EQ(differences, testing::CodePage::kDifferences);
}

TEST(Decoded, AgreesWithTheOtherImplementation) {
  const testing::CodePage code_page;
  std::int32_t differences = 0;
  for (std::int32_t code = 0; code < kCodes; ++code) {
    if (decoded(code).view() == code_page.decoded(code)) continue;
    ++differences;
    if (testing::CodePage::kDecodingDifferences == 0) ADD_FAILURE() << std::hex << code;
  }
  EXPECT_EQ(differences, testing::CodePage::kDecodingDifferences);
}

}  // namespace
}  // namespace corvelle
