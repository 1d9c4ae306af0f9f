#include "datenum/number_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string_view>

namespace corvelle {
namespace {

std::u16string_view shown(const ShortText<32>& text) { return text; }

TEST(NumberText, HasFifteenDigits) {
  EXPECT_EQ(shown(number_text(0)), u"0");
  EXPECT_EQ(shown(number_text(2958466)), u"2958466");
  EXPECT_EQ(shown(number_text(-657435.25)), u"-657435.25");
  EXPECT_EQ(shown(number_text(1234567.890123456)), u"1234567.89012346");
  EXPECT_EQ(shown(number_text(999999999999999)), u"999999999999999");
  EXPECT_EQ(shown(number_text(1e15)), u"1e+15");
  EXPECT_EQ(shown(number_text(-1.5e20)), u"-1.5e+20");
  EXPECT_EQ(shown(number_text(123456789012345678.0)), u"1.23456789012346e+17");
  EXPECT_EQ(shown(number_text(1e99)), u"1e+99");
  EXPECT_EQ(shown(number_text(1e100)), u"1e+100");
  EXPECT_EQ(shown(number_text(std::numeric_limits<double>::max())), u"1.79769313486232e+308");
  EXPECT_EQ(shown(number_text(2e-5)), u"2e-05");
  EXPECT_EQ(shown(number_text(-1.25e-300)), u"-1.25e-300");
}

TEST(NumberText, SaysWhatIsNoNumber) {
  EXPECT_EQ(shown(number_text(std::numeric_limits<double>::infinity())), u"inf");
  EXPECT_EQ(shown(number_text(-std::numeric_limits<double>::infinity())), u"-inf");
  EXPECT_EQ(shown(number_text(std::numeric_limits<double>::quiet_NaN())), u"nan");
  EXPECT_EQ(shown(number_text(-std::numeric_limits<double>::quiet_NaN())), u"-nan");
}

}  // namespace
}  // namespace corvelle
