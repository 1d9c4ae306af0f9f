#include "datenum/date_text.h"
#include "tests/reference/arguments.h"
#include "tests/reference/comparison.h"
#include "tests/reference/date_model.h"

namespace corvelle::testing {
namespace {

auto display_arguments(Choices& choices) {
  std::u16string strDay = any_text(choices);
  if (!choices.once_in(4)) strDay.resize(8, u'0');
  std::u16string strFmt = any_text(choices);
  if (choices.once_in(2)) strFmt += u'日';
  return std::tuple(std::move(strDay), std::move(strFmt));
}

// Year and month asked for, and the year and month of today.
auto month_arguments(Choices& choices) {
  const auto year = [&] {
    return choices.once_in(4) ? any_int16(choices, 0) : static_cast<std::int16_t>(choices.between(1890, 2110));
  };
  const std::int16_t vYear = choices.once_in(8) ? std::int16_t{0} : year();
  const std::int16_t vMonth = any_int16(choices, 12);
  return std::tuple(vYear, vMonth, year(), static_cast<std::int16_t>(choices.between(1, 12)));
}

std::int16_t days_of_month(std::int16_t vYear, std::int16_t vMonth, std::int16_t current_year,
                           std::int16_t current_month) {
  return getDays_Pf(vYear, vMonth, [&] { return CalendarDate{current_year, current_month, 15}; });
}

}  // namespace

std::vector<ComparedOperation> date_operations() {
  const auto date = [](Choices& choices) { return std::tuple(any_date(choices)); };
  return {
      compared("dateToStr_Pf", {5}, dateToStr_Pf, reference::dateToStr_Pf, date),
      compared("strDateFmt_Pf", {}, strDateFmt_Pf, reference::strDateFmt_Pf, display_arguments),
      compared("getDays_Pf", {}, days_of_month, reference::getDays_Pf, month_arguments),
  };
}

}  // namespace corvelle::testing
