// datenum/date_text.h - dates as compact text, and the days of a month.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/function_ref.h"
#include "base/result.h"
#include "base/text.h"
#include "datenum/calendar.h"

namespace corvelle {

// `vDate`, an automation date (days since 30 December 1899, the fraction being the time of day), as year, month and
// day in digits; month and day take two digits each, the year as many as it has.
//   dateToStr_Pf(38719.6458) == u"20060102", dateToStr_Pf(-657434) == u"1000101"
// Raises invalid argument (5) for what lies outside 1 January 100 to 31 December 9999, infinities and NaN.
Result<Text> dateToStr_Pf(double vDate);

inline constexpr std::u16string_view kDefaultDateMarks = u"年月日";

// A `strDay` of exactly eight characters, whatever they are, as its first four, the next two and the last two,
// with the first character of `strFmt` behind the first part and its second character behind the second part.
// Behind the third part only 日 is ever written, where `strFmt` ends with it. Any other `strDay` comes back unchanged.
//   strDateFmt_Pf(u"20060102") == u"2006年01月02日", strDateFmt_Pf(u"20060102", u"--") == u"2006-01-02"
Result<Text> strDateFmt_Pf(std::u16string_view strDay, std::u16string_view strFmt = kDefaultDateMarks);

// The number of days of month `vMonth` in year `vYear`, by the Gregorian rule for any year. 0 stands for the current
// year or month, each on its own; no other value is special, and a month outside 1 to 12 has 31 days.
//   getDays_Pf(2000, 2) == 29, getDays_Pf(2006, 4) == 30, getDays_Pf(2006, 13) == 31
std::int16_t getDays_Pf(std::int16_t vYear, std::int16_t vMonth);

// The same by the clock `today`, which is read once, and only where an argument is 0.
std::int16_t getDays_Pf(std::int16_t vYear, std::int16_t vMonth, FunctionRef<CalendarDate()> today);

}  // namespace corvelle
