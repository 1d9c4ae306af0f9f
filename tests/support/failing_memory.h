// tests/support/failing_memory.h - memory that runs out at a chosen allocation. For native tests.
//
// It is the memory that what is linked into the program takes by malloc, calloc and realloc: all that the product
// takes. What shared libraries allocate, the standard library for the tests among them, is not counted and does not
// fail.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

namespace corvelle::testing {

// Counts the allocations of this thread while it lives, and lets one of them fail. One at a time.
class FailingMemory {
 public:
  // The allocation of that number finds no memory, counted from 1; with 0 all find some.
  explicit FailingMemory(std::size_t failing);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  static std::size_t allocations();
  // How many more blocks there are than when it began.
  static long blocks_left();
};

// Runs `operation` with one of its allocations failing, each in turn, and gives `check` what comes of it; with all that
// gone, there are as many blocks as before. Gives how many failed.
//   for_each_failure([] { return Center(u"a b"); }, [](Result<Text> result) { EXPECT_OUT_OF_MEMORY(std::move(result));
//   });
template <class Operation, class Check>
std::size_t for_each_failure(Operation operation, Check check) {
  for (std::size_t failing = 1;; ++failing) {
    SCOPED_TRACE(::testing::Message() << "allocation " << failing << " fails");
    const FailingMemory memory(failing);
    auto outcome = operation();
    if (FailingMemory::allocations() < failing) return failing - 1;
    check(std::move(outcome));
    EXPECT_EQ(FailingMemory::blocks_left(), 0);
  }
}

}  // namespace corvelle::testing
