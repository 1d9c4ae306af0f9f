#include "data/computer_name.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/result.h"

namespace corvelle {
namespace {

using namespace std::string_view_literals;

// `name` in a buffer of 250 characters, as the system leaves it.
std::u16string buffer_with(std::u16string_view name) {
  std::u16string buffer(name);
  buffer.resize(250);
  return buffer;
}

TEST(ComputerNameIn, KeepsASingleByteNameExactly) {
  EXPECT_EQ(computer_name_in(buffer_with(u"OFFICE-PC"), 9), u"OFFICE-PC");
}

TEST(ComputerNameIn, RemovesTheNulsThatADoubleByteNameBringsIn) {
  EXPECT_EQ(computer_name_in(buffer_with(u"财务-1"), 6), u"财务-1");
}

TEST(ComputerNameIn, IsEmptyAfterACallThatFailed) {
  EXPECT_EQ(computer_name_in(buffer_with(u""), 250), u"");
  EXPECT_EQ(computer_name_in(buffer_with(u""), 0), u"");
  EXPECT_EQ(computer_name_in(buffer_with(u""), 4096), u"") << "the size that the system wanted";
}

TEST(ComputerNameIn, CutsAtTheSizeEvenWithinAName) {
  EXPECT_EQ(computer_name_in(buffer_with(u"OFFICE-PC"), 3), u"OFF");
  EXPECT_EQ(computer_name_in(buffer_with(u"OFFICE-PC"), 0), u"");
}

TEST(ComputerNameIn, RemovesEveryNulAndNothingElse) {
  EXPECT_EQ(computer_name_in(u"\0A\0 \xD800\0Z"sv, 6), u"A \xD800"sv);
  EXPECT_EQ(computer_name_in(u"", 1), u"");
}

TEST(ComputerNameIn, TakesAWholeBufferWithoutNuls) {
  EXPECT_EQ(computer_name_in(std::u16string(250, u'N'), 0xFFFFFFFFu), std::u16string(250, u'N'));
}

}  // namespace
}  // namespace corvelle
