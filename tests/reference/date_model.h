// tests/reference/date_model.h - the date operations by walking the calendar day by day.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvelle::reference {

// Raises Error 5 outside 1 January 100 to 31 December 9999.
std::u16string dateToStr_Pf(double vDate);
std::u16string strDateFmt_Pf(std::u16string_view strDay, std::u16string_view strFmt);

// `current_year` and `current_month` are today's, read where an argument is 0.
std::int16_t getDays_Pf(std::int16_t vYear, std::int16_t vMonth, std::int16_t current_year, std::int16_t current_month);

}  // namespace corvelle::reference
