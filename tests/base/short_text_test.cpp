#include "base/short_text.h"

#include <gtest/gtest.h>

#include <string_view>

namespace corvelle {
namespace {

using namespace std::string_view_literals;

template <std::size_t kCapacity>
std::u16string_view view_of(const ShortText<kCapacity>& text) {
  return text;
}

TEST(ShortText, IsEmptyAtFirst) {
  const ShortText<4> text;
  EXPECT_EQ(view_of(text), u"");
  EXPECT_EQ(*text.c_str(), u'\0');
}

TEST(ShortText, TakesAsMuchAsThereIsRoomFor) {
  ShortText<4> text;
  text.append(u"ab").append(u"").append(u"c");
  EXPECT_EQ(view_of(text), u"abc");
  text.append(u"d");
  EXPECT_EQ(view_of(text), u"abcd") << "as many as it can hold";
  text.append(u"e").append(u"");
  EXPECT_EQ(view_of(text), u"abcd");
  EXPECT_EQ(text.c_str()[4], u'\0') << "behind the last one, too";
  EXPECT_EQ(view_of(ShortText<4>().append(u"ab").append(u"cde")), u"abcd") << "cut in the middle of a piece";
  EXPECT_EQ(view_of(ShortText<0>().append(u"a")), u"");
}

TEST(ShortText, KeepsEveryCodeUnit) { EXPECT_EQ(view_of(ShortText<4>().append(u"\0\xD800\0"sv)), u"\0\xD800\0"sv); }

TEST(ShortText, IsThereForTheCompiler) {
  static constexpr ShortText<2> kText = ShortText<2>().append(u"abc");
  static_assert(std::u16string_view(kText) == u"ab");
}

TEST(ShortText, IsOfAnyUnit) { EXPECT_EQ(std::string_view(ShortText<3, char>().append("abcd")), "abc"); }

}  // namespace
}  // namespace corvelle
