#include "base/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace corvelle {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

std::string utf8_of(std::u16string_view text) {
  std::string bytes;
  for_each_utf8_byte(text, [&](char byte) { bytes += byte; });
  return bytes;
}

// `character` as two units, where it needs them.
std::u16string units_of(char32_t character) {
  if (character < 0x10000) return {static_cast<char16_t>(character)};
  return {static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)),
          static_cast<char16_t>(0xDC00 + (character & 0x3FF))};
}

// What the bytes stand for, by the definition of UTF-8: the first says how many there are.
char32_t decoded(const std::string& bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes.at(i)); };
  std::size_t count = 1;
  if (byte(0) >= 0x80) count = 2;
  if (byte(0) >= 0xE0) count = 3;
  if (byte(0) >= 0xF0) count = 4;
  EXPECT_EQ(bytes.size(), count);
  char32_t character = count == 1 ? byte(0) : byte(0) & (0x7F >> count);
  for (std::size_t i = 1; i < count; ++i) {
    EXPECT_EQ(byte(i) & 0xC0, 0x80);
    character = character << 6 | (byte(i) & 0x3F);
  }
  return character;
}

TEST(Utf8, HasAsManyBytesAsACharacterNeeds) {
  EXPECT_EQ(utf8_of(u"\0"sv), "\0"s);
  EXPECT_EQ(utf8_of(u"\u007F"), "\x7F");
  EXPECT_EQ(utf8_of(u"\u0080"), "\xC2\x80");
  EXPECT_EQ(utf8_of(u"\u07FF"), "\xDF\xBF");
  EXPECT_EQ(utf8_of(u"\u0800"), "\xE0\xA0\x80");
  EXPECT_EQ(utf8_of(u"\uFFFF"), "\xEF\xBF\xBF");
  EXPECT_EQ(utf8_of(u"\U00010000"), "\xF0\x90\x80\x80");
  EXPECT_EQ(utf8_of(u"\U0010FFFF"), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, OfEveryCharacterStandsForIt) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (character == 0xD800) character = 0xE000;
    ASSERT_EQ(decoded(utf8_of(units_of(character))), character) << std::hex << +character;
  }
}

TEST(Utf8, OfASurrogateAloneIsTheReplacementCharacter) {
  EXPECT_EQ(utf8_of(u"\xD800"), "\uFFFD");
  EXPECT_EQ(utf8_of(u"\xDBFF\xD800\xDFFFz\xDC00"), "\uFFFD\U000103FFz\uFFFD");
  EXPECT_EQ(utf8_of(u"\xDFFF\xD800\xD800"), "\uFFFD\uFFFD\uFFFD");
}

}  // namespace
}  // namespace corvelle
