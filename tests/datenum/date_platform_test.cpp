// Every date there is, held against the platform's own conversion.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleauto.h>

#include <iterator>
#include <string>

#include "datenum/date_text.h"
#include "tests/support/result.h"

namespace corvelle {
namespace {

using testing::value_of;

// Year, month and day. By hand, since it is wanted for every day there is.
std::u16string text_of(const SYSTEMTIME& time) {
  char16_t digits[8];
  int number = time.wYear * 10000 + time.wMonth * 100 + time.wDay;
  char16_t* first = std::end(digits);
  for (; number != 0; number /= 10) *--first = static_cast<char16_t>(u'0' + number % 10);
  return {first, std::end(digits)};
}

// The platform's splitting of `date`; empty where it refuses.
std::u16string platform_text(double date) {
  UDATE split;
  return SUCCEEDED(VarUdateFromDate(date, 0, &split)) ? text_of(split.st) : std::u16string();
}

TEST(DatePlatform, SplitsEveryDayAlike) {
  for (std::int32_t day = kFirstDay; day <= kLastDay; ++day) {
    ASSERT_EQ(value_of(dateToStr_Pf(day)).view(), platform_text(day)) << "day " << day;
  }
}

TEST(DatePlatform, SplitsEveryDayLikeSystemTimes) {
  for (std::int32_t day = kFirstDay; day <= kLastDay; ++day) {
    SYSTEMTIME split;
    ASSERT_TRUE(VariantTimeToSystemTime(day, &split)) << "day " << day;
    ASSERT_EQ(value_of(dateToStr_Pf(day)).view(), text_of(split)) << "day " << day;
  }
}

TEST(DatePlatform, IgnoresTheTimeOfDayAlike) {
  for (std::int32_t day = kFirstDay; day <= kLastDay; day += 97) {
    for (const double time : {0.25, 0.5, 0.75, 0.9999}) {
      const double date = day < 0 ? day - time : day + time;
      ASSERT_EQ(value_of(dateToStr_Pf(date)).view(), platform_text(date)) << "date " << date;
    }
  }
}

TEST(DatePlatform, HasTheSameRange) {
  EXPECT_EQ(platform_text(kFirstDay - 1), u"");
  EXPECT_EQ(platform_text(kLastDay + 1), u"");
  EXPECT_EQ(platform_text(kFirstDay - 0.99), value_of(dateToStr_Pf(kFirstDay - 0.99)).view());
  EXPECT_EQ(platform_text(kLastDay + 0.99), value_of(dateToStr_Pf(kLastDay + 0.99)).view());
}

}  // namespace
}  // namespace corvelle
