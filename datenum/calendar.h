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
  // Years are counted from 1 March, so that a leap day ends its year. A quarter of a day at a time, centuries and years
  // divide evenly: 146,097 days in four centuries, 1,461 in four years.
  constexpr std::uint32_t kDaysFromYear0 = 693899;  // 1 March 0 to 30 December 1899
  const std::uint32_t days = static_cast<std::uint32_t>(day) + kDaysFromYear0;
  const std::uint32_t century = (4 * days + 3) / 146097;
  const std::uint32_t in_century = (4 * days + 3) % 146097 / 4;
  const std::uint32_t year_of_century = (4 * in_century + 3) / 1461;
  const std::uint32_t in_year = (4 * in_century + 3) % 1461 / 4;
  // Months have 30.6 days on average, 65,536 / 2,141, in the fixed pattern 31, 30, 31, 30, 31 from March and August.
  const std::uint32_t months = 2141 * in_year + 197913;
  const std::uint32_t month = months / 65536;  // 3 to 14
  const bool next_year = month > 12;
  return {
      .year = static_cast<int>(100 * century + year_of_century + (next_year ? 1 : 0)),
      .month = static_cast<int>(next_year ? month - 12 : month),
      .day = static_cast<int>(months % 65536 / 2141 + 1),
  };
}

// The current date of the machine's clock, in local time.
CalendarDate local_today();

}  // namespace corvelle
