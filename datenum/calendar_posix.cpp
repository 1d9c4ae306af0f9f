#include <ctime>

#include "datenum/calendar.h"

namespace corvelle {

CalendarDate local_today() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return {.year = local.tm_year + 1900, .month = local.tm_mon + 1, .day = local.tm_mday};
}

}  // namespace corvelle
