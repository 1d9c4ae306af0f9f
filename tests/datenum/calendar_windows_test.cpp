#include <windows.h>

#include <gtest/gtest.h>

#include "datenum/calendar.h"
#include "datenum/date_text.h"
#include "tests/support/loaded_image.h"

namespace corvelle::testing {
namespace {

// The user's own date; the system's, of which the time zone makes it, is another month's.
void WINAPI give_local_time(SYSTEMTIME* time) {
  *time = {};
  time->wYear = 2024;
  time->wMonth = 2;
  time->wDay = 29;
  time->wHour = 23;
}
void WINAPI give_system_time(SYSTEMTIME* time) {
  *time = {};
  time->wYear = 2024;
  time->wMonth = 3;
  time->wDay = 1;
  time->wHour = 7;
}

TEST(LocalToday, IsTheUsersDate) {
  const ReplacedImport local(GetModuleHandleW(nullptr), "GetLocalTime", reinterpret_cast<void*>(&give_local_time));
  const ReplacedImport system(GetModuleHandleW(nullptr), "GetSystemTime", reinterpret_cast<void*>(&give_system_time));
  ASSERT_TRUE(local.found());
  const CalendarDate today = local_today();
  EXPECT_EQ(today.year, 2024);
  EXPECT_EQ(today.month, 2);
  EXPECT_EQ(today.day, 29);
  EXPECT_EQ(getDays_Pf(0, 0), 29);
  EXPECT_EQ(getDays_Pf(2023, 0), 28);
}

}  // namespace
}  // namespace corvelle::testing
