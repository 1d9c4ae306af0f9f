// What becomes of the values of base/ where there is no memory for them.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/replaced.h"
#include "base/result.h"
#include "base/text.h"
#include "base/text_builder.h"
#include "tests/support/failing_memory.h"
#include "tests/support/runtime_error.h"

namespace corvelle::testing {
namespace {

// So that the other tests cannot pass because nothing ever fails.
TEST(FailingMemory, FailsOnceAndCounts) {
  const FailingMemory memory(2);
  const Text first(u"first");
  EXPECT_FALSE(first.failed());
  EXPECT_TRUE(Text(u"second").failed());
  EXPECT_FALSE(Text(u"third").failed());
  EXPECT_EQ(FailingMemory::allocations(), 3u);
  EXPECT_EQ(FailingMemory::blocks_left(), 1) << "the first";
}

TEST(WantOfMemory, MakesAnErrorThatNeedsNone) {
  EXPECT_EQ(for_each_failure([] { return Error(ErrorNumber::overflow, {u"Center", u"Str"}, {u"is long"}); },
                             [](Error error) { EXPECT_OUT_OF_MEMORY(std::move(error)); }),
            1u);
  EXPECT_EQ(for_each_failure([] { return Error(-1, u"description", u"source"); },
                             [](Error error) { EXPECT_OUT_OF_MEMORY(std::move(error)); }),
            1u);
  const FailingMemory memory(1);
  EXPECT_OUT_OF_MEMORY(out_of_memory());
  EXPECT_EQ(FailingMemory::allocations(), 0u);
}

TEST(WantOfMemory, MakesTextsFail) {
  const std::vector<std::function<Text()>> makings = {
      [] { return Text(u"ab"); },
      [] { return Text::of_length(2); },
      [] { return joined({{u"a", u"b"}}); },
      [] { return replaced(u"a-b", u'-', u"+"); },
      [] { return replaced(u"a-b", u'-', u"--"); },
      [] {
        Text text(u"abc");
        if (!text.failed()) text.keep_first(1);
        return text;
      },
      [] {
        TextBuilder builder(1);
        for (int i = 0; i < 10; ++i) builder.append(u"ab");
        return builder.text();
      },
  };
  std::size_t failures = 0;
  for (const auto& make : makings) {
    failures += for_each_failure(make, [](Text text) {
      EXPECT_TRUE(text.failed());
      EXPECT_TRUE(text.empty());
      EXPECT_EQ(text.view(), u"");
      EXPECT_OUT_OF_MEMORY(Result<Text>(std::move(text)));
    });
  }
  EXPECT_GT(failures, makings.size());
}

TEST(WantOfMemory, LeavesTheEmptyTextAlone) {
  const FailingMemory memory(1);
  EXPECT_FALSE(Text(u"").failed());
  EXPECT_FALSE(Text::of_length(0).failed());
  EXPECT_FALSE(joined({{u"", u""}}).failed());
  EXPECT_FALSE(joined({}).failed());
  EXPECT_FALSE(replaced(u"--", u'-', u"").failed());
  EXPECT_FALSE(TextBuilder(0).text().failed());
  EXPECT_EQ(FailingMemory::allocations(), 0u);
}

Text failed_text() {
  const FailingMemory memory(1);
  return Text(u"ab");
}

TEST(WantOfMemory, StaysWithATextThatHasFailed) {
  Text text = failed_text();
  ASSERT_TRUE(text.failed());
  EXPECT_EQ(text.size(), 0u);
  EXPECT_EQ(std::as_const(text).data(), nullptr);
  EXPECT_EQ(text.data(), nullptr);
  EXPECT_EQ(text.view(), u"");
  text.keep_first(0);
  EXPECT_TRUE(text.failed()) << "nothing to keep is no success";
  Text moved = std::move(text);
  EXPECT_TRUE(moved.failed());
  EXPECT_FALSE(text.failed());  // NOLINT(bugprone-use-after-move): the empty state is promised
  text = std::move(moved);
  EXPECT_TRUE(text.failed());
  EXPECT_EQ(text.release(), nullptr);
  EXPECT_FALSE(text.failed()) << "what was handed over is here no more";
  text = failed_text();
  text = Text(u"cd");
  EXPECT_FALSE(text.failed());
  EXPECT_EQ(text, u"cd");
}

TEST(WantOfMemory, TakesNothingMoreIntoABuilder) {
  for_each_failure(
      [] {
        TextBuilder builder(2);
        builder.append(u"ab");
        builder.append(u"cd");
        builder.append(u"");
        return builder;
      },
      [](TextBuilder builder) {
        builder.append(u"e");
        EXPECT_TRUE(builder.text().failed());
        builder.append(u"f");
        EXPECT_EQ(builder.text(), u"f") << "it begins anew";
      });
}

}  // namespace
}  // namespace corvelle::testing
