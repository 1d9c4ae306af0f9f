#include <windows.h>

#include <gtest/gtest.h>

#include "data/computer_name.h"

namespace corvelle {
namespace {

TEST(GetComputerNm, IsTheNetbiosName) {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
  DWORD size = ARRAYSIZE(name);
  ASSERT_TRUE(GetComputerNameW(name, &size));
  EXPECT_GT(size, 0u);
  EXPECT_EQ(GetComputerNm(), std::u16string_view(reinterpret_cast<const char16_t*>(name), size));
}

}  // namespace
}  // namespace corvelle
