// datenum/calendar.h - days of the Gregorian calendar.
#pragma once

#include <cstdint>

namespace corvelle {

struct CalendarDate {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31
};

// The days that an automation date can name, counted from 30 December 1899.
inline constexpr std::int32_t kFirstDay = -657434;  // 1 January 100
inline constexpr std::int32_t kLastDay = 2958465;   // 31 December 9999

// The date of `day`, which lies between kFirstDay and kLastDay.
//   calendar_date(0) is 30 December 1899, calendar_date(38719) is 2 January 2006
constexpr CalendarDate calendar_date(std::int32_t day) {
  // Years are counted from 1 March, so that a leap day ends its year, and in cycles of 400 years.
  constexpr std::uint32_t kDaysFromYear0 = 693899;  // 1 March 0 to 30 December 1899
  constexpr std::uint32_t kDaysOfCycle = 146097;
  const std::uint32_t days = static_cast<std::uint32_t>(day) + kDaysFromYear0;
  const std::uint32_t in_cycle = days % kDaysOfCycle;
  const std::uint32_t year_of_cycle =
      (in_cycle - in_cycle / 1460 + in_cycle / 36524 - in_cycle / (kDaysOfCycle - 1)) / 365;
  const std::uint32_t in_year = in_cycle - (365 * year_of_cycle + year_of_cycle / 4 - year_of_cycle / 100);
  // Five months in a row from March or August take 31, 30, 31, 30, 31 days: 153.
  const std::uint32_t months_from_march = (5 * in_year + 2) / 153;
  const std::uint32_t day_of_month = in_year - (153 * months_from_march + 2) / 5 + 1;
  const bool next_year = months_from_march >= 10;
  return {
      .year = static_cast<int>(days / kDaysOfCycle * 400 + year_of_cycle + (next_year ? 1 : 0)),
      .month = static_cast<int>(next_year ? months_from_march - 9 : months_from_march + 3),
      .day = static_cast<int>(day_of_month),
  };
}

// The current date of the machine's clock, in local time.
CalendarDate local_today();

}  // namespace corvelle
