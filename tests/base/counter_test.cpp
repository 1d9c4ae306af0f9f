#include "base/counter.h"

#include <string>

#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

constexpr Argument kWhere{u"Center", u"Str"};

TEST(Narrow16, KeepsWhatFits) {
  EXPECT_EQ(narrow16(32767, kWhere), 32767);
  EXPECT_EQ(narrow16(-32768, kWhere), -32768);
}

TEST(Narrow16, OverflowsOnBothSides) {
  EXPECT_RUNTIME_ERROR_SAYING(narrow16(32768, kWhere), ErrorNumber::overflow,
                              u"Center: Str gives 32768, which does not fit in 16 bits");
  EXPECT_RUNTIME_ERROR(narrow16(-32769, kWhere), ErrorNumber::overflow);
}

TEST(Length16, OverflowsAboveTheCounter) {
  EXPECT_EQ(length16(std::u16string(32767, u'a'), kWhere), 32767);
  EXPECT_RUNTIME_ERROR_SAYING(length16(std::u16string(32768, u'a'), kWhere), ErrorNumber::overflow,
                              u"Center: Str has 32768 characters; at most 32766 can be counted");
}

TEST(StepPastEnd, OverflowsAtTheCounterBoundOnly) {
  EXPECT_NO_THROW(step_past_end(32766, kWhere));
  EXPECT_RUNTIME_ERROR_SAYING(step_past_end(32767, kWhere), ErrorNumber::overflow,
                              u"Center: Str has 32767 characters; at most 32766 can be counted");
}

TEST(CheckWalkable, OverflowsFromTheCounterBoundOn) {
  EXPECT_NO_THROW(check_walkable(32766, kWhere));
  EXPECT_RUNTIME_ERROR_SAYING(check_walkable(3'000'000'000, kWhere), ErrorNumber::overflow,
                              u"Center: Str has 3000000000 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR(check_walkable(32767, kWhere), ErrorNumber::overflow);
}

TEST(Walkable, OverflowsFromTheCounterBoundOn) {
  EXPECT_EQ(walkable(u"", kWhere), u"");
  EXPECT_EQ(walkable(std::u16string(32766, u'a'), kWhere).size(), 32766u);
  EXPECT_RUNTIME_ERROR(walkable(std::u16string(32767, u'a'), kWhere), ErrorNumber::overflow);
  EXPECT_RUNTIME_ERROR(walkable(std::u16string(32768, u'a'), kWhere), ErrorNumber::overflow);
}

}  // namespace
}  // namespace corvelle
