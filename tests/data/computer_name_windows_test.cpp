#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string_view>

#include "data/computer_name.h"
#include "tests/support/loaded_image.h"
#include "tests/support/result.h"

namespace corvelle::testing {
namespace {

TEST(GetComputerNm, IsTheNetbiosName) {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
  DWORD size = ARRAYSIZE(name);
  ASSERT_TRUE(GetComputerNameW(name, &size));
  EXPECT_GT(size, 0u);
  EXPECT_EQ(GetComputerNm(), std::u16string_view(reinterpret_cast<const char16_t*>(name), size));
}

// What the system answers in its own place: the name's bytes in the ANSI code page, and their number.
std::string_view name_bytes;

BOOL WINAPI give_name(LPSTR buffer, LPDWORD size) {
  if (name_bytes.empty()) return FALSE;
  std::memcpy(buffer, name_bytes.data(), name_bytes.size());
  buffer[name_bytes.size()] = '\0';
  *size = static_cast<DWORD>(name_bytes.size());
  return TRUE;
}

class PlannedComputerName : public ::testing::Test {
 protected:
  static Result<Text> named(std::string_view bytes) {
    name_bytes = bytes;
    return GetComputerNm();
  }

  ReplacedImport name_{GetModuleHandleW(nullptr), "GetComputerNameA", reinterpret_cast<void*>(&give_name)};
};

TEST_F(PlannedComputerName, IsReadByTheAnsiCodePage) {
  ASSERT_TRUE(name_.found());
  EXPECT_EQ(named("OFFICE-PC"), u"OFFICE-PC");
  ASSERT_EQ(GetACP(), 936u);
  EXPECT_EQ(named("\xBF\xE2\xB4\xE6-PC"), u"库存-PC") << "bytes are counted, and the NULs behind the name dropped";
  EXPECT_EQ(named("\xBF\xE2\xB4\xE6\xB2\xBF\xB5\xE7\xC4\xD4\xD2\xBB\xBA\xC5"), u"库存部电脑一号");
  EXPECT_EQ(named(std::string_view("A\0B", 3)), u"AB");
}

TEST_F(PlannedComputerName, IsEmptyWhereTheSystemGivesNone) { EXPECT_EQ(named(""), u""); }

}  // namespace
}  // namespace corvelle::testing
