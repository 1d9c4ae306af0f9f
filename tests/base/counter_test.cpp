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

TEST(TooLongToBegin, AboveTheCounter) {
  EXPECT_FALSE(too_long_to_begin(u"", kWhere));
  EXPECT_FALSE(too_long_to_begin(std::u16string(32767, u'a'), kWhere));
  EXPECT_RUNTIME_ERROR_SAYING(too_long_to_begin(std::u16string(32768, u'a'), kWhere), ErrorNumber::overflow,
                              u"Center: Str has 32768 characters; at most 32766 can be counted");
}

TEST(TooLong, FromTheCounterBoundOn) {
  EXPECT_FALSE(too_long(0, kWhere));
  EXPECT_FALSE(too_long(32766, kWhere));
  EXPECT_RUNTIME_ERROR_SAYING(too_long(32767, kWhere), ErrorNumber::overflow,
                              u"Center: Str has 32767 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(too_long(3'000'000'000, kWhere), ErrorNumber::overflow,
                              u"Center: Str has 3000000000 characters; at most 32766 can be counted");
}

TEST(TooLong, CountsACharacterOfATextAsOne) {
  EXPECT_FALSE(too_long(u"", kWhere));
  EXPECT_FALSE(too_long(std::u16string(32766, u'中'), kWhere));
  EXPECT_RUNTIME_ERROR(too_long(std::u16string(32767, u'中'), kWhere), ErrorNumber::overflow);
  EXPECT_RUNTIME_ERROR(too_long(std::u16string(32768, u'中'), kWhere), ErrorNumber::overflow);
}

}  // namespace
}  // namespace corvelle
