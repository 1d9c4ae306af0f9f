#include "base/code_units.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>

#include "base/processor.h"

namespace corvelle {
namespace {

TEST(FindUnit, GivesTheFirstOffset) {
  EXPECT_EQ(find_unit(u"a,b,c", u','), 1u);
  EXPECT_EQ(find_unit(u"abc", u','), kNowhere);
  EXPECT_EQ(find_unit(u"", u','), kNowhere);
}

TEST(FindNthUnit, CountsFromOne) {
  EXPECT_EQ(find_nth_unit(u"a,b,c", u',', 1), 1u);
  EXPECT_EQ(find_nth_unit(u"a,b,c", u',', 2), 3u);
  EXPECT_EQ(find_nth_unit(u"a,b,c", u',', 3), kNowhere);
  EXPECT_EQ(find_nth_unit(u"a,b,c", u',', 0), kNowhere);
  EXPECT_EQ(find_nth_unit(std::u16string(5000, u','), u',', 5000), 4999u);
}

TEST(CountUnit, CountsEveryOccurrence) { EXPECT_EQ(count_unit(u"a,b,c", u','), 2u); }

// More of them than the lanes of a vector can count.
TEST(CountUnit, CountsOnPastWhatALaneHolds) {
  const std::u16string text(3'000'000, u',');
  EXPECT_EQ(count_unit(text, u','), text.size());
  EXPECT_EQ(internal::count_unit_sse2(text, u','), text.size());
  if (has_avx2()) {
    EXPECT_EQ(internal::count_unit_avx2(text, u','), text.size());
  }
  EXPECT_EQ(find_nth_unit(text, u',', text.size()), text.size() - 1);
  EXPECT_EQ(find_nth_unit(text, u',', text.size() + 1), kNowhere);
}

TEST(RemoveUnit, ClosesUpTheRest) {
  std::u16string text = u" a b  c ";
  text.resize(remove_unit(text.data(), text.size(), u' '));
  EXPECT_EQ(text, u"abc");
}

TEST(KeepRange, KeepsBothEnds) {
  std::u16string text = u"/0a9:12,5";
  text.resize(keep_range(text.data(), text.size(), u'0', u'9'));
  EXPECT_EQ(text, u"09125");
}

// Texts of every length up to a few blocks and around the lengths at which the counting changes its step, at every
// alignment, from none to nothing but the wanted unit.
void for_many_texts(const std::function<void(std::u16string_view)>& check) {
  std::mt19937 random(936);
  std::u16string buffer;
  for (std::size_t length = 0; length < 2120; length = length < 140 || length > 2040 ? length + 1 : length + 97) {
    for (std::size_t alignment = 0; alignment < 16; ++alignment) {
      for (const unsigned one_in : {1U, 2U, 9U, 300U}) {
        // Both sides of the text hold the wanted unit too, so that reading outside it shows.
        buffer.assign(length + alignment + 16, u',');
        for (std::size_t i = 0; i < length; ++i) {
          if (random() % one_in != 0) buffer[alignment + i] = static_cast<char16_t>(random() % 0x10000);
        }
        check(std::u16string_view(buffer).substr(alignment, length));
      }
    }
  }
}

TEST(CodeUnits, SearchesAgreeWithTheirTwins) {
  for_many_texts([](std::u16string_view text) {
    ASSERT_EQ(find_unit(text, u','), scalar::find_unit(text, u','));
    const std::size_t count = scalar::count_unit(text, u',');
    ASSERT_EQ(count_unit(text, u','), count);
    ASSERT_EQ(internal::count_unit_sse2(text, u','), count);
    if (has_avx2()) {
      ASSERT_EQ(internal::count_unit_avx2(text, u','), count);
    }
    for (const std::size_t n : {std::size_t{0}, std::size_t{1}, count / 3, count / 2, count, count + 1}) {
      ASSERT_EQ(find_nth_unit(text, u',', n), scalar::find_nth_unit(text, u',', n)) << n << " of " << count;
    }
  });
}

TEST(CodeUnits, SievesAgreeWithTheirTwinsAndStayInside) {
  for_many_texts([](std::u16string_view text) {
    constexpr std::u16string_view kFence = u"|fence|";
    std::u16string blockwise(text);
    blockwise += kFence;
    std::u16string unitwise = blockwise;
    const std::size_t kept = remove_unit(blockwise.data(), text.size(), u',');
    ASSERT_EQ(kept, scalar::remove_unit(unitwise.data(), text.size(), u','));
    ASSERT_EQ(blockwise.substr(0, kept), unitwise.substr(0, kept));
    ASSERT_EQ(blockwise.substr(text.size()), kFence);
  });
}

TEST(CodeUnits, EveryUnitIsSievedAsByTheTwin) {
  std::u16string all(0x10000, u'\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char16_t>(i);
  for (const auto& [first, last] :
       {std::pair{u'0', u'9'}, {u'\0', u'\x7FFF'}, {u'\x7FFF', u'\x8001'}, {u'\x8000', u'\xFFFF'}}) {
    std::u16string blockwise = all;
    std::u16string unitwise = all;
    blockwise.resize(keep_range(blockwise.data(), all.size(), first, last));
    unitwise.resize(scalar::keep_range(unitwise.data(), all.size(), first, last));
    EXPECT_EQ(blockwise, unitwise);
    EXPECT_EQ(unitwise.size(), static_cast<std::size_t>(last - first) + 1);
    blockwise = all;
    EXPECT_EQ(remove_unit(blockwise.data(), all.size(), first), 0xFFFFu);
  }
}

}  // namespace
}  // namespace corvelle
