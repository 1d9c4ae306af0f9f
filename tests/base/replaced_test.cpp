#include "base/replaced.h"

#include <gtest/gtest.h>

#include <string>

namespace corvelle {
namespace {

using namespace std::string_view_literals;

TEST(Replaced, ByOneCharacter) {
  EXPECT_EQ(replaced(u"a-b-c", u'-', u"+"), u"a+b+c");
  EXPECT_EQ(replaced(u"", u'-', u"+"), u"");
  EXPECT_EQ(replaced(u"--", u'-', u"\0"sv), u"\0\0"sv);
}

TEST(Replaced, ByNone) {
  EXPECT_EQ(replaced(u"-a-b-", u'-', u""), u"ab");
  EXPECT_EQ(replaced(u"---", u'-', u""), u"");
}

TEST(Replaced, BySeveral) {
  EXPECT_EQ(replaced(u"-a-b-", u'-', u"xyz"), u"xyzaxyzbxyz");
  EXPECT_EQ(replaced(u"abc", u'-', u"xyz"), u"abc");
  EXPECT_EQ(replaced(u"-", u'-', u"--"), u"--") << "the replacement is not looked through again";
}

TEST(Replaced, LongTexts) {
  EXPECT_EQ(replaced(std::u16string(5000, u'-'), u'-', u"ab").size(), 10000u);
  EXPECT_TRUE(replaced(std::u16string(5000, u'-'), u'-', u"").empty());
}

}  // namespace
}  // namespace corvelle
