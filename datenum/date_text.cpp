#include "datenum/date_text.h"

#include <algorithm>
#include <bit>

#include "base/errors.h"
#include "base/slice.h"
#include "datenum/number_text.h"

namespace corvelle {
namespace {

// The whole days of `date`; the fraction is the time of day on both sides of day 0. Taken from its bits, since a host
// may have it raise an exception where a number is compared with NaN or cut.
Result<std::int32_t> whole_days(double date) {
  constexpr int kMantissaBits = 52;
  constexpr int kTooMany = 22;  // as an exponent of two, which is beyond both ends
  const auto bits = std::bit_cast<std::uint64_t>(date);
  const int exponent = static_cast<int>(bits >> kMantissaBits & 0x7FF) - 0x3FF;
  const std::uint64_t mantissa = (bits & 0xFFFFFFFFFFFFF) | 0x10000000000000;
  const auto size =
      static_cast<std::int32_t>(exponent < 0 ? 0 : mantissa >> (kMantissaBits - std::min(exponent, kTooMany)));
  const std::int32_t days = bits >> 63 != 0 ? -size : size;
  if (exponent >= kTooMany || days < kFirstDay || days > kLastDay) {
    return Error(ErrorNumber::invalid_argument, {u"dateToStr_Pf", u"vDate"},
                 {u"is ", number_text(date), u"; a date lies between ", decimal_text(kFirstDay),
                  u" (1 January 100) and ", decimal_text(kLastDay), u" (31 December 9999)"});
  }
  return days;
}

char16_t digit(int value) { return static_cast<char16_t>(u'0' + value); }

// Writes `value`, below 100, in two digits, and gives what is behind them.
char16_t* write_two_digits(int value, char16_t* next) {
  *next++ = digit(value / 10);
  *next++ = digit(value % 10);
  return next;
}

bool is_leap(int year) { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }

// Kept: a month outside 1 to 12 has 31 days.
std::int16_t days_of_month(int year, int month) {
  switch (month) {
    case 2: return is_leap(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11: return 30;
    default: return 31;
  }
}

}  // namespace

Result<Text> dateToStr_Pf(double vDate) {
  Result<std::int32_t> days = whole_days(vDate);
  if (days.failed()) return days.take_error();
  const CalendarDate date = calendar_date(*days);
  const int century = date.year / 100;
  Text result = Text::of_length(century < 10 ? 7 : 8);
  if (result.failed()) return result;
  char16_t* next = result.data();
  if (century >= 10) *next++ = digit(century / 10);
  *next++ = digit(century % 10);
  next = write_two_digits(date.year % 100, next);
  next = write_two_digits(date.month, next);
  write_two_digits(date.day, next);
  return result;
}

Result<Text> strDateFmt_Pf(std::u16string_view strDay, std::u16string_view strFmt) {
  if (strDay.size() != 8) return Text(strDay);
  return joined({{substring(strDay, 1, 4), substring(strFmt, 1, 1), substring(strDay, 5, 2), substring(strFmt, 2, 1),
                  substring(strDay, 7, 2), strFmt.ends_with(u'日') ? u"日" : u""}});
}

std::int16_t getDays_Pf(std::int16_t vYear, std::int16_t vMonth) {
  return getDays_Pf(vYear, vMonth, [] { return local_today(); });
}

std::int16_t getDays_Pf(std::int16_t vYear, std::int16_t vMonth, FunctionRef<CalendarDate()> today) {
  if (vYear != 0 && vMonth != 0) return days_of_month(vYear, vMonth);
  // One reading for both: midnight may pass between two.
  const CalendarDate now = today();
  return days_of_month(vYear != 0 ? vYear : now.year, vMonth != 0 ? vMonth : now.month);
}

}  // namespace corvelle
