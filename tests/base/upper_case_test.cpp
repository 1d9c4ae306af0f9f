#include "base/upper_case.h"

#include <gtest/gtest.h>

namespace corvelle {
namespace {

TEST(UpperCase, MapsLettersAndKeepsTheRest) {
  EXPECT_EQ(upper_case(u'a'), u'A');
  EXPECT_EQ(upper_case(u'Z'), u'Z');
  EXPECT_EQ(upper_case(u'1'), u'1');
  EXPECT_EQ(upper_case(u'ä'), u'Ä');
  EXPECT_EQ(upper_case(u'中'), u'中');
  EXPECT_EQ(upper_case(u'\xD800'), u'\xD800');
}

}  // namespace
}  // namespace corvelle
