#include "datenum/date_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <string>
#include <utility>

#include "tests/cases/date_cases.h"
#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

using testing::native;

static_assert(calendar_date(0).year == 1899 && calendar_date(0).month == 12 && calendar_date(0).day == 30);
static_assert(calendar_date(kFirstDay).year == 100 && calendar_date(kFirstDay).day == 1);
static_assert(calendar_date(kLastDay).year == 9999 && calendar_date(kLastDay).day == 31);

TEST(DateText, NativeCases) {
  testing::run_natively(
      testing::date_cases(),
      {{u"dateToStr_Pf", native(&dateToStr_Pf)},
       {u"strDateFmt_Pf", native(&strDateFmt_Pf)},
       {u"getDays_Pf", native([](std::int16_t year, std::int16_t month) { return getDays_Pf(year, month); })}});
}

TEST(DateText, DoesNotDependOnFloatingPoint) {
  using Outcome = std::pair<bool, std::u16string>;  // whether it failed, and of an error its description
  const auto outcome = [](double date, const testing::FloatingPoint& setting) {
    Outcome outcome;
    EXPECT_TRUE(testing::keeps(setting, [&] {
      const Result<Text> result = dateToStr_Pf(date);
      outcome = {result.failed(), std::u16string(result.failed() ? result.error().description() : result->view())};
    }));
    return outcome;
  };
  for (const std::uint64_t bits : testing::kTroublesomeNumbers) {
    const auto date = std::bit_cast<double>(bits);
    const Outcome expected = outcome(date, testing::kUsualFloatingPoint);
    for (const testing::FloatingPoint& setting : testing::every_floating_point()) {
      EXPECT_EQ(outcome(date, setting), expected)
          << std::hex << bits << ", x87 " << setting.x87 << ", SSE " << setting.sse;
    }
  }
}

// A second calendar, which only knows how to step to the next day.
CalendarDate day_after(CalendarDate date) {
  const int days = getDays_Pf(static_cast<std::int16_t>(date.year), static_cast<std::int16_t>(date.month));
  if (date.day < days) return {date.year, date.month, date.day + 1};
  if (date.month < 12) return {date.year, date.month + 1, 1};
  return {date.year + 1, 1, 1};
}

TEST(CalendarDate, StepsThroughEveryDay) {
  CalendarDate expected{.year = 100, .month = 1, .day = 1};
  for (std::int32_t day = kFirstDay; day <= kLastDay; ++day, expected = day_after(expected)) {
    const CalendarDate date = calendar_date(day);
    ASSERT_TRUE(date.year == expected.year && date.month == expected.month && date.day == expected.day)
        << "day " << day << " became " << date.year << "-" << date.month << "-" << date.day;
  }
  EXPECT_EQ(expected.year, 10000);
}

TEST(dateToStr_Pf, SaysTheRange) {
  const std::u16string range = u"; a date lies between -657434 (1 January 100) and 2958465 (31 December 9999)";
  const auto expect_error = [&](double date, const std::u16string& shown) {
    EXPECT_RUNTIME_ERROR_SAYING(dateToStr_Pf(date), ErrorNumber::invalid_argument,
                                u"dateToStr_Pf: vDate is " + shown + range);
  };
  expect_error(2958466, u"2958466");
  expect_error(-657435, u"-657435");
  expect_error(-657435.5, u"-657435.5");
  expect_error(1e300, u"1e+300");
  expect_error(std::numeric_limits<double>::infinity(), u"inf");
  expect_error(-std::numeric_limits<double>::infinity(), u"-inf");
  expect_error(std::numeric_limits<double>::quiet_NaN(), u"nan");
}

TEST(strDateFmt_Pf, HasTheChineseMarksByDefault) { EXPECT_EQ(strDateFmt_Pf(u"20060102"), u"2006年01月02日"); }

// A clock that stands still and counts how often it is read.
struct StoppedClock {
  CalendarDate date;
  int readings = 0;
  CalendarDate operator()() {
    ++readings;
    return date;
  }
};

TEST(getDays_Pf, ReadsTheClockOnlyWhereAnArgumentIsZero) {
  StoppedClock clock{.date = {.year = 2024, .month = 2, .day = 10}};
  EXPECT_EQ(getDays_Pf(2006, 2, clock), 28);
  EXPECT_EQ(getDays_Pf(-1, -1, clock), 31);
  EXPECT_EQ(clock.readings, 0);
  EXPECT_EQ(getDays_Pf(0, 2, clock), 29);
  EXPECT_EQ(clock.readings, 1);
  EXPECT_EQ(getDays_Pf(2006, 0, clock), 28);
  EXPECT_EQ(clock.readings, 2);
  EXPECT_EQ(getDays_Pf(0, 0, clock), 29);
  EXPECT_EQ(clock.readings, 3) << "year and month must come from the same moment";
}

TEST(getDays_Pf, FollowsTheClockAcrossAYearsEnd) {
  StoppedClock last_day{.date = {.year = 2023, .month = 12, .day = 31}};
  StoppedClock next_day{.date = {.year = 2024, .month = 1, .day = 1}};
  EXPECT_EQ(getDays_Pf(0, 2, last_day), 28);
  EXPECT_EQ(getDays_Pf(0, 2, next_day), 29);
  EXPECT_EQ(getDays_Pf(0, 0, last_day), 31);
  EXPECT_EQ(getDays_Pf(0, 0, next_day), 31);
}

TEST(getDays_Pf, FollowsTheClockThroughFebruary) {
  StoppedClock leap_day{.date = {.year = 2024, .month = 2, .day = 29}};
  StoppedClock next_day{.date = {.year = 2024, .month = 3, .day = 1}};
  EXPECT_EQ(getDays_Pf(0, 0, leap_day), 29);
  EXPECT_EQ(getDays_Pf(2023, 0, leap_day), 28);
  EXPECT_EQ(getDays_Pf(0, 0, next_day), 31);
}

TEST(getDays_Pf, ReadsTheMachinesClock) {
  const CalendarDate before = local_today();
  const int days = getDays_Pf(0, 0);
  const CalendarDate after = local_today();
  if (before.month != after.month) GTEST_SKIP() << "a month ended during the test";
  EXPECT_EQ(days, getDays_Pf(static_cast<std::int16_t>(before.year), static_cast<std::int16_t>(before.month)));
  EXPECT_GE(before.year, 2024);
  EXPECT_TRUE(before.month >= 1 && before.month <= 12 && before.day >= 1 && before.day <= 31);
}

}  // namespace
}  // namespace corvelle
