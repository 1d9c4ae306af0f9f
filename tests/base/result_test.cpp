#include "base/result.h"

#include <limits>
#include <memory>
#include <utility>

#include "base/text.h"
#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

Error some_error() { return Error(-1, u"description", u"source"); }

TEST(Result, IsTheValue) {
  Result<Text> result = Text(u"ab");
  EXPECT_FALSE(result.failed());
  EXPECT_FALSE(result.error());
  EXPECT_EQ(*result, u"ab");
  EXPECT_EQ(result->size(), 2u);
  const Result<int> number = 7;
  EXPECT_EQ(*number, 7);
  const Text moved = *std::move(result);
  EXPECT_EQ(moved, u"ab");
}

TEST(Result, IsTheError) {
  Result<std::int16_t> result = some_error();
  EXPECT_TRUE(result.failed());
  EXPECT_EQ(result.error().description(), u"description");
  const Error taken = result.take_error();
  EXPECT_EQ(taken.description(), u"description");
  EXPECT_FALSE(result.error()) << "it was taken";
}

TEST(Result, OfATextThatFailedIsWantOfMemory) {
  Result<Text> result = Text::of_length(std::numeric_limits<std::size_t>::max());
  EXPECT_TRUE(result.failed());
  EXPECT_OUT_OF_MEMORY(std::move(result));
  EXPECT_FALSE(Result<Text>(Text()).failed()) << "the empty text has not";
}

// The value is built in place, and nothing of an error is left behind.
TEST(Result, MovesWhatItIs) {
  Result<std::unique_ptr<int>> value = std::make_unique<int>(7);
  Result<std::unique_ptr<int>> target = some_error();
  target = std::move(value);
  EXPECT_FALSE(target.failed());
  EXPECT_EQ(**target, 7);
  target = Result<std::unique_ptr<int>>(some_error());
  EXPECT_TRUE(target.failed());
}

}  // namespace
}  // namespace corvelle
