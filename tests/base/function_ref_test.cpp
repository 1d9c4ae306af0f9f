#include "base/function_ref.h"

#include <gtest/gtest.h>

namespace corvelle {
namespace {

int twice(FunctionRef<int(int)> step) { return step(step(1)); }

TEST(FunctionRef, CallsWhatItRefersTo) {
  int calls = 0;
  EXPECT_EQ(twice([&](int value) { return ++calls, value * 3; }), 9);
  EXPECT_EQ(calls, 2);
}

TEST(FunctionRef, RefersToConstCallables) {
  const auto add_four = [](int value) { return value + 4; };
  EXPECT_EQ(twice(add_four), 9);
}

}  // namespace
}  // namespace corvelle
