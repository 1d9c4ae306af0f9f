#include <windows.h>

#include "datenum/calendar.h"

namespace corvelle {

CalendarDate local_today() {
  SYSTEMTIME local;
  GetLocalTime(&local);
  return {.year = local.wYear, .month = local.wMonth, .day = local.wDay};
}

}  // namespace corvelle
