#include "base/vectors/code_units.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "base/vectors/processor.h"
#include "base/vectors/scalar.h"

namespace corvelle {
namespace {

TEST(FindUnit, GivesTheFirstOffset) {
  EXPECT_EQ(find_unit(u"a,b,c", u','), 1u);
  EXPECT_EQ(find_unit(u"abc", u','), kNowhere);
  EXPECT_EQ(find_unit(u"", u','), kNowhere);
}

TEST(FindLastUnit, GivesTheLastOffset) {
  EXPECT_EQ(find_last_unit(u"a,b,c", u','), 3u);
  EXPECT_EQ(find_last_unit(u"abc", u','), kNowhere);
  EXPECT_EQ(find_last_unit(u"", u','), kNowhere);
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

std::u16string copied_without(std::u16string_view text, char16_t unit) {
  std::u16string result(text.size(), u'\0');
  result.resize(copy_without(text, unit, result.data()));
  return result;
}

TEST(CopyWithout, ClosesUpTheRest) { EXPECT_EQ(copied_without(u" a b  c ", u' '), u"abc"); }

TEST(CopyRange, KeepsBothEnds) {
  constexpr std::u16string_view kText = u"/0a9:12,5";
  std::u16string result(kText.size(), u'\0');
  result.resize(copy_range(kText, u'0', u'9', result.data()));
  EXPECT_EQ(result, u"09125");
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
    ASSERT_EQ(find_last_unit(text, u','), scalar::find_last_unit(text, u','));
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

TEST(CodeUnits, CopiesAgreeWithTheirTwinsAndStayInside) {
  for_many_texts([](std::u16string_view text) {
    constexpr std::u16string_view kFence = u"|fence|";
    std::u16string blockwise(text.size(), u'?');
    blockwise += kFence;
    std::u16string unitwise = blockwise;
    const std::size_t kept = copy_without(text, u',', blockwise.data());
    ASSERT_EQ(kept, scalar::copy_without(text, u',', unitwise.data()));
    ASSERT_EQ(blockwise.substr(0, kept), unitwise.substr(0, kept));
    ASSERT_EQ(blockwise.substr(text.size()), kFence);
  });
}

constexpr std::size_t kAllUnits = 0x10000;
constexpr std::size_t kAlignments = 16;

// All units, and so many more that all of them can be taken from any place of a block on.
std::u16string all_units() {
  std::u16string units(kAllUnits + kAlignments, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i) units[i] = static_cast<char16_t>(i);
  return units;
}

// Among units that differ from it by a bit, at two places.
TEST(CodeUnits, EveryUnitIsFoundAsByTheTwinsAtEveryAlignment) {
  for (std::size_t unit = 0; unit < kAllUnits; ++unit) {
    const auto wanted = static_cast<char16_t>(unit);
    std::u16string buffer(75 + kAlignments, u'\0');
    for (std::size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<char16_t>(unit ^ 1U << i % 16);
    buffer[unit % buffer.size()] = wanted;
    buffer[unit / buffer.size() % buffer.size()] = wanted;
    for (std::size_t alignment = 0; alignment < kAlignments; ++alignment) {
      const std::u16string_view text = std::u16string_view(buffer).substr(alignment, 75);
      ASSERT_EQ(find_unit(text, wanted), scalar::find_unit(text, wanted)) << unit;
      ASSERT_EQ(find_last_unit(text, wanted), scalar::find_last_unit(text, wanted)) << unit;
      ASSERT_EQ(find_nth_unit(text, wanted, 2), scalar::find_nth_unit(text, wanted, 2)) << unit;
      ASSERT_EQ(internal::count_unit_sse2(text, wanted), scalar::count_unit(text, wanted)) << unit;
      if (has_avx2()) {
        ASSERT_EQ(internal::count_unit_avx2(text, wanted), scalar::count_unit(text, wanted)) << unit;
      }
    }
  }
}

// What both ways of copying write of all units, taken from every place of a block and put at every place of one.
template <class Copy, class Twin>
void expect_same_copies(Copy copy, Twin twin) {
  const std::u16string units = all_units();
  std::u16string blockwise(kAllUnits + kAlignments, u'|');
  std::u16string unitwise = blockwise;
  for (std::size_t from = 0; from < kAlignments; ++from) {
    const std::size_t to = from * 5 % kAlignments;  // every place once
    const std::u16string_view text = std::u16string_view(units).substr(from, kAllUnits);
    const std::size_t kept = copy(text, blockwise.data() + to);
    ASSERT_EQ(kept, twin(text, unitwise.data() + to)) << from;
    ASSERT_TRUE(std::u16string_view(blockwise).substr(to, kept) == std::u16string_view(unitwise).substr(to, kept))
        << from;
  }
}

TEST(CodeUnits, EveryUnitIsCopiedAsByTheTwinsAtEveryAlignment) {
  for (const auto& range :
       {std::pair{u'0', u'9'}, {u'\0', u'\x7FFF'}, {u'\x7FFF', u'\x8001'}, {u'\x8000', u'\xFFFF'}}) {
    const char16_t first = range.first;
    const char16_t last = range.second;
    expect_same_copies([=](auto text, char16_t* to) { return copy_range(text, first, last, to); },
                       [=](auto text, char16_t* to) { return scalar::copy_range(text, first, last, to); });
    expect_same_copies([=](auto text, char16_t* to) { return copy_without(text, first, to); },
                       [=](auto text, char16_t* to) { return scalar::copy_without(text, first, to); });
    const std::u16string units = all_units().substr(0, kAllUnits);
    std::u16string copied = units;
    EXPECT_EQ(copy_range(units, first, last, copied.data()), static_cast<std::size_t>(last - first) + 1);
    EXPECT_EQ(copied_without(units, first).size(), kAllUnits - 1);
  }
}

TEST(CopyWithPairs, EveryUnitAtEveryAlignmentAsByTheTwin) {
  const std::u16string units = all_units();
  const std::u16string seconds(units.rbegin(), units.rend());
  std::u16string blockwise(3 * units.size(), u'|');
  std::u16string unitwise = blockwise;
  for (std::size_t start = 0; start < kAlignments; ++start) {
    const std::u16string_view text = std::u16string_view(units).substr(start, kAllUnits);
    const std::size_t other = start * 5 % kAlignments;
    copy_with_pairs(text, u'\xABCD', seconds.data() + other, blockwise.data() + start);
    scalar::copy_with_pairs(text, u'\xABCD', seconds.data() + other, unitwise.data() + start);
    ASSERT_TRUE(blockwise == unitwise) << start;
  }
}

TEST(CopyEverySecond, EveryUnitAtEveryPlaceAsByTheTwin) {
  std::u16string all(0x10000, u'\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char16_t>(i);
  for (std::size_t start = 0; start < 40; ++start) {
    const std::u16string_view text = std::u16string_view(all).substr(start);
    std::u16string blockwise(text.size() / 2 + 8, u'|');
    std::u16string unitwise = blockwise;
    copy_every_second(text, blockwise.data());
    scalar::copy_every_second(text, unitwise.data());
    EXPECT_EQ(blockwise, unitwise);
    EXPECT_EQ(unitwise[100], text[200]);
  }
  for (std::size_t length = 0; length < 40; ++length) {
    std::u16string blockwise(30, u'|');
    std::u16string unitwise = blockwise;
    copy_every_second(std::u16string_view(all).substr(0x7FF0, length), blockwise.data());
    scalar::copy_every_second(std::u16string_view(all).substr(0x7FF0, length), unitwise.data());
    EXPECT_EQ(blockwise, unitwise);
    EXPECT_EQ(unitwise.find(u'|'), (length + 1) / 2);
  }
}

TEST(CopyWithPairs, AgreesWithItsTwinAndStaysInside) {
  const std::u16string seconds = u"0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  for (std::size_t length = 0; length < 60; ++length) {
    const std::u16string text(length, u'中');
    std::u16string blockwise(3 * length + 8, u'|');
    std::u16string unitwise = blockwise;
    copy_with_pairs(text, u'\xABCD', seconds.data() + 1, blockwise.data());
    scalar::copy_with_pairs(text, u'\xABCD', seconds.data() + 1, unitwise.data());
    EXPECT_EQ(blockwise, unitwise);
  }
  std::u16string result(9, u'\0');
  copy_with_pairs(u"abc", u'-', u"123", result.data());
  EXPECT_EQ(result, u"a-1b-2c-3");
}

}  // namespace
}  // namespace corvelle
