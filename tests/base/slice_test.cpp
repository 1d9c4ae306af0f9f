#include "base/slice.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvelle {
namespace {

using namespace std::string_view_literals;

TEST(Trimmed, RemovesSpacesAtBothEndsOnly) {
  EXPECT_EQ(trimmed(u"  a b "), u"a b");
  EXPECT_EQ(trimmed(u"   "), u"");
  EXPECT_EQ(trimmed(u""), u"");
}

TEST(Trimmed, KeepsOtherBlanksAndNul) {
  EXPECT_EQ(trimmed(u"\ta\u3000"), u"\ta\u3000");
  EXPECT_EQ(trimmed(u" \0 "sv), u"\0"sv);
}

TEST(Substring, EndsWhereTheTextEnds) {
  EXPECT_EQ(substring(u"abc", 1, 2), u"ab");
  EXPECT_EQ(substring(u"abc", 3, 9), u"c");
  EXPECT_EQ(substring(u"abc", 2, 0), u"");
}

TEST(Substring, IsEmptyBeyondTheEnd) {
  EXPECT_EQ(substring(u"abc", 4, 1), u"");
  EXPECT_EQ(substring(u"", 1, 1), u"");
  EXPECT_EQ(substring(u"abc", std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max()), u"");
}

TEST(PositionOf, GivesTheFirstPositionFromTheStartOn) {
  EXPECT_EQ(position_of(u"a,b,c", u",", 1), 2);
  EXPECT_EQ(position_of(u"a,b,c", u",", 2), 2);
  EXPECT_EQ(position_of(u"a,b,c", u",", 3), 4);
  EXPECT_EQ(position_of(u"a,b,c", u",", 5), 0);
}

TEST(PositionOf, FindsOverlappingOccurrences) {
  EXPECT_EQ(position_of(u"|||", u"||", 1), 1);
  EXPECT_EQ(position_of(u"|||", u"||", 2), 2);
  EXPECT_EQ(position_of(u"|||", u"||", 3), 0);
}

TEST(PositionOf, FindsTheEmptyTextWhereverACharacterStands) {
  EXPECT_EQ(position_of(u"abc", u"", 1), 1);
  EXPECT_EQ(position_of(u"abc", u"", 3), 3);
  EXPECT_EQ(position_of(u"abc", u"", 4), 0);
  EXPECT_EQ(position_of(u"", u"", 1), 0);
}

TEST(PositionOf, ComparesCodeUnits) {
  EXPECT_EQ(position_of(u"aAa", u"A", 1), 2);
  EXPECT_EQ(position_of(u"a\0b"sv, u"\0"sv, 1), 2);
  EXPECT_EQ(position_of(u"x\xD800y"sv, u"\xD800"sv, 1), 2);
}

TEST(PositionOf, StartsWithinTheText) {
  EXPECT_EQ(position_of(u"abc", u"a", 0), 0);
  EXPECT_EQ(position_of(u"abc", u"c", 4), 0);
}

}  // namespace
}  // namespace corvelle
