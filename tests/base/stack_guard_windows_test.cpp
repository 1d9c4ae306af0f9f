#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

extern "C" std::uintptr_t __stack_chk_guard;  // NOLINT(bugprone-reserved-identifier): the compiler's own name

namespace corvelle::testing {
namespace {

bool ended_for_its_stack(int status) { return static_cast<DWORD>(status) == STATUS_STACK_BUFFER_OVERRUN; }

// Writes as many characters into a small array as it is told.
[[gnu::noinline, gnu::optimize("stack-protector-strong")]] int fill(std::size_t length) {
  char array[16];
  void* (*volatile write)(void*, int, std::size_t) = &std::memset;  // the compiler must not see how far
  write(array, 'x', length);
  return array[3];
}

TEST(StackGuardDeathTest, EndsAProcessWhoseArrayWasWrittenPastItsEnd) {
  EXPECT_EQ(fill(16), 'x');
  EXPECT_EXIT(fill(64), ended_for_its_stack, "");
}

TEST(StackGuard, IsNoValueThatIsKnownBeforehand) {
  EXPECT_NE(__stack_chk_guard, 0u);
  EXPECT_NE(__stack_chk_guard, ~std::uintptr_t{0});
  EXPECT_NE(__stack_chk_guard & 0xFFFF0000, 0u);
}

}  // namespace
}  // namespace corvelle::testing
