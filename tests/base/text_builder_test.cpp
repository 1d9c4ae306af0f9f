#include "base/text_builder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace corvelle {
namespace {

using namespace std::string_view_literals;

TEST(TextBuilder, PutsPiecesTogether) {
  TextBuilder builder(3);
  builder.append(u"a-");
  builder.append(u"");
  builder.append(u"\0\xD800"sv);
  EXPECT_EQ(builder.text(), u"a-\0\xD800"sv);
}

TEST(TextBuilder, OfNothingIsEmpty) {
  for (const std::size_t expected : {0U, 1U, 100U}) {
    TextBuilder builder(expected);
    builder.append(u"");
    const Text text = builder.text();
    EXPECT_EQ(text, u"");
    EXPECT_FALSE(text.failed());
  }
}

// Lengths around what was expected, and around what it has grown to.
TEST(TextBuilder, GrowsWhereverItsRoomEnds) {
  for (std::size_t expected = 0; expected < 10; ++expected) {
    for (std::size_t first = 0; first < 25; ++first) {
      for (std::size_t piece = 1; piece < 25; ++piece) {
        TextBuilder builder(expected);
        std::u16string all(first, u'f');
        builder.append(all);
        for (std::size_t i = 0; i < 5; ++i) {
          const std::u16string next(piece, static_cast<char16_t>(u'0' + i));
          builder.append(next);
          all += next;
        }
        const Text text = builder.text();
        ASSERT_EQ(text, all) << expected << ", " << first << ", " << piece;
        ASSERT_EQ(text.data()[text.size()], u'\0');
      }
    }
  }
}

TEST(TextBuilder, BeginsAnewBehindItsText) {
  TextBuilder builder(8);
  builder.append(u"first");
  EXPECT_EQ(builder.text(), u"first");
  EXPECT_EQ(builder.text(), u"") << "nothing is left";
  builder.append(u"second");
  EXPECT_EQ(builder.text(), u"second");
}

}  // namespace
}  // namespace corvelle
