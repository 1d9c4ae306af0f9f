#include "tests/reference/date_model.h"

#include <cmath>
#include <vector>

#include "tests/reference/steps.h"

namespace corvelle::reference {
namespace {

struct Day {
  std::int16_t year;
  std::int8_t month;
  std::int8_t day;
};

bool is_leap(int year) {
  if (year % 400 == 0) return true;
  if (year % 100 == 0) return false;
  return year % 4 == 0;
}

int days_in(int year, int month) {
  switch (month) {
    case 2: return is_leap(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11: return 30;
    default: return 31;
  }
}

Day next(Day today) {
  if (today.day < days_in(today.year, today.month)) return {today.year, today.month, ++today.day};
  if (today.month < 12) return {today.year, ++today.month, 1};
  return {++today.year, 1, 1};
}

// Every day from 1 January 100 to 31 December 9999, and where 30 December 1899 stands among them.
struct Calendar {
  Calendar() {
    for (Day day{100, 1, 1}; day.year <= 9999; day = next(day)) {
      if (day.year == 1899 && day.month == 12 && day.day == 30) day_zero = static_cast<double>(days.size());
      days.push_back(day);
    }
  }

  std::vector<Day> days;
  double day_zero = 0;
};

std::u16string digits_of(int number) {
  std::u16string digits;
  for (; number > 0; number /= 10) digits.insert(digits.begin(), static_cast<char16_t>(u'0' + number % 10));
  return digits;
}

std::u16string padded(std::u16string digits) { return digits.size() == 1 ? u"0" + digits : digits; }

}  // namespace

std::u16string dateToStr_Pf(double vDate) {
  static const Calendar calendar;
  const double whole = std::trunc(vDate);  // the fraction counts forward within its day, also before day zero
  const double place = calendar.day_zero + whole;
  if (!(place >= 0 && place < static_cast<double>(calendar.days.size()))) throw Error{kInvalidArgument};
  const Day day = calendar.days[static_cast<std::size_t>(place)];
  return digits_of(day.year) + padded(digits_of(day.month)) + padded(digits_of(day.day));
}

std::u16string strDateFmt_Pf(std::u16string_view strDay, std::u16string_view strFmt) {
  if (strDay.empty() || length(strDay) != 8) return std::u16string(strDay);
  const std::u16string y(substring(strDay, 1, 4));
  const std::u16string m(substring(strDay, 5, 2));
  const std::u16string d(substring(strDay, 7, 2));
  const std::u16string s1(substring(strFmt, 1, 1));
  const std::u16string s2(substring(strFmt, 2, 1));
  const std::u16string s3(strFmt.empty() ? strFmt : substring(strFmt, length(strFmt), 1));
  return y + s1 + m + s2 + d + (s3 == u"日" ? s3 : u"");
}

std::int16_t getDays_Pf(std::int16_t vYear, std::int16_t vMonth, std::int16_t current_year,
                        std::int16_t current_month) {
  const int year = vYear == 0 ? current_year : vYear;
  const int month = vMonth == 0 ? current_month : vMonth;
  return static_cast<std::int16_t>(days_in(year, month));
}

}  // namespace corvelle::reference
