#include "base/vectors/unit_map.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/vectors/processor.h"
#include "base/vectors/scalar.h"

namespace corvelle {
namespace {

constexpr UnitMap::Row kRows[] = {
    {u"０零", u"0"}, {u"１一", u"1"},          {u"至到－", u"-"},      {u",，＼\\/／", u"、"},
    {u"十", u"10"},  {u"ab\u8000", u"\u7FFF"}, {u"\uFFFE", u"\u0001"},
};
constexpr UnitMap kMap(kRows);

// What becomes of `unit`, by the rows alone.
std::u16string_view becomes(const char16_t& unit) {
  for (const UnitMap::Row& row : kRows) {
    if (row.units.find(unit) != std::u16string_view::npos) return row.become;
  }
  return {&unit, 1};
}

std::u16string all_units() {
  std::u16string all(0x10000, u'\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char16_t>(i);
  return all;
}

constexpr std::u16string_view kFence = u"|a fence behind the room for the copy, as long as a block of vectors|";

// The copy by vectors where there are any, which the twin's has to be, too; nothing behind it may be written.
std::u16string mapped(std::u16string_view text) {
  const std::size_t length = mapped_length(text, kMap);
  std::u16string blockwise = std::u16string(length, u'?').append(kFence);
  std::u16string unitwise = blockwise;
  EXPECT_EQ(copy_mapped(text, kMap, blockwise.data()), length);
  EXPECT_EQ(scalar::copy_mapped(text, kMap, unitwise.data()), length);
  EXPECT_EQ(blockwise, unitwise);
  EXPECT_EQ(unitwise.substr(length), kFence);
  return unitwise.substr(0, length);
}

TEST(UnitMap, KnowsWhatEveryUnitBecomes) {
  for (const char16_t unit : all_units()) ASSERT_EQ(kMap.first_of(unit), becomes(unit)[0]) << std::hex << +unit;
  EXPECT_EQ(kMap.lengthened(), u'十');
  EXPECT_EQ(kMap.second(), u'0');
}

TEST(CopyMapped, WritesTwoUnitsForOne) {
  EXPECT_EQ(mapped(u"二十/三十"), u"二10、三10");
  EXPECT_EQ(mapped(u"十十"), u"1010");
  EXPECT_EQ(mapped(u""), u"");
}

TEST(CopyMapped, EveryUnitAtEveryPlace) {
  const std::u16string all = all_units();
  std::u16string expected;
  for (const char16_t& unit : all) expected += becomes(unit);
  for (std::size_t start = 0; start < 34; ++start) {
    // What stands at the front is not mapped here, hence as many units behind.
    ASSERT_EQ(mapped(std::u16string_view(all).substr(start)), expected.substr(start)) << start;
  }
}

// Texts of every length up to a few blocks, at every alignment, from none to nothing but the unit that becomes two.
TEST(CopyMapped, EveryLengthAndDensity) {
  std::mt19937 random(936);
  constexpr std::u16string_view kOthers = u"ab零，六\u0041\u5342";
  for (std::size_t length = 0; length < 200; ++length) {
    for (std::size_t alignment = 0; alignment < 16; ++alignment) {
      for (const unsigned one_in : {1U, 2U, 9U, 23U, 300U}) {
        // Both sides of the text hold that unit too, so that reading outside it shows.
        std::u16string buffer(alignment + length + 40, u'十');
        for (std::size_t i = 0; i < length; ++i) {
          if (random() % one_in != 0) buffer[alignment + i] = kOthers[random() % kOthers.size()];
        }
        const std::u16string_view text = std::u16string_view(buffer).substr(alignment, length);
        std::u16string expected;
        for (const char16_t& unit : text) expected += becomes(unit);
        ASSERT_EQ(mapped(text), expected) << "length " << length << ", alignment " << alignment << ", " << one_in;
      }
    }
  }
}

TEST(CopyMapped, LeavesABlockToTheTwinAtMost) {
  const std::u16string text(1000, u'a');
  std::u16string copy(text.size(), u'?');
  if (has_avx2()) {
    EXPECT_EQ(internal::copy_mapped_avx2(text.data(), text.size(), kMap, copy.data()).read, 992u);
  }
}

}  // namespace
}  // namespace corvelle
