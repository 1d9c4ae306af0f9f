#include "base/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

using namespace std::string_view_literals;

TEST(Text, IsEmptyAtFirst) {
  const Text text;
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(text, u"");
}

TEST(Text, CopiesEveryCodeUnit) {
  const Text text(u"a\0中\xD800"sv);
  EXPECT_EQ(text, u"a\0中\xD800"sv);
  EXPECT_EQ(text.data()[4], u'\0') << "a NUL stands behind the last code unit";
}

TEST(Text, KeepsItsFirstUnits) {
  Text text(u"abcdef");
  text.keep_first(2);
  EXPECT_EQ(text, u"ab");
  EXPECT_EQ(text.data()[2], u'\0');
  text.keep_first(0);
  EXPECT_EQ(text, u"");
}

// Long ones are allocated in another way.
TEST(Text, EndsWithANulAtAnyLength) {
  for (const std::size_t length : {1U, 8191U, 8192U, 32766U, 100000U}) {
    Text text = Text::of_length(length);
    EXPECT_EQ(text.size(), length);
    std::fill_n(text.data(), length, u'中');
    EXPECT_EQ(text.data()[length], u'\0');
    EXPECT_EQ(Text(text.view()), std::u16string(length, u'中'));
    text.keep_first(length / 2);
    EXPECT_EQ(text, std::u16string(length / 2, u'中'));
    EXPECT_EQ(text.data()[length / 2], u'\0');
  }
}

TEST(Text, RefusesLengthsThatNoMemoryHas) {
  constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
  EXPECT_OUT_OF_MEMORY(Result<Text>(Text::of_length(kMost)));
  // With its NUL it would take no bytes at all.
  EXPECT_OUT_OF_MEMORY(Result<Text>(Text::of_length(kMost / sizeof(char16_t))));
}

TEST(Text, MovesLeaveTheSourceEmpty) {
  Text source(u"abc");
  Text target(std::move(source));
  EXPECT_EQ(target, u"abc");
  EXPECT_EQ(source, u"");  // NOLINT(bugprone-use-after-move): the empty state is promised
  source = std::move(target);
  EXPECT_EQ(source, u"abc");
  EXPECT_TRUE(target.empty());  // NOLINT(bugprone-use-after-move): likewise
}

TEST(Text, ReleaseHandsOverTheStorage) {
  Text text(u"abc");
  const std::unique_ptr<char16_t, TextStorageDeleter> storage(text.release());
  EXPECT_EQ(std::u16string_view(storage.get()), u"abc");
  EXPECT_TRUE(text.empty());
}

}  // namespace
}  // namespace corvelle
