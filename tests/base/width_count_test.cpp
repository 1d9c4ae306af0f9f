#include "base/vectors/width_count.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/ansi_code.h"
#include "base/vectors/processor.h"

namespace corvelle {
namespace {

constexpr std::size_t kAllUnits = 65536;
constexpr std::size_t kLongestRun = 300;  // longer than the steps that the vector code takes
constexpr std::size_t kAlignments = 16;

// Texts that the vector code takes by different ways, one of each kind.
std::u16string ascii(std::mt19937& random) { return {static_cast<char16_t>(random() % 0x80)}; }
std::u16string chinese(std::mt19937& random) { return {static_cast<char16_t>(u'一' + random() % 20902)}; }
std::u16string punctuation(std::mt19937& random) {
  constexpr std::u16string_view kMarks = u"，。“”‘’—…·《》（）！？０Ａａ\u3004\u2017€　";
  return {kMarks[random() % kMarks.size()]};
}
std::u16string any_unit(std::mt19937& random) { return {static_cast<char16_t>(random())}; }
std::u16string mixture(std::mt19937& random) {
  switch (random() % 16) {
    case 0: return any_unit(random);
    case 1: return punctuation(random);
    case 2:
    case 3:
    case 4: return ascii(random);
    default: return chinese(random);
  }
}

std::u16string text_of(std::u16string (*piece)(std::mt19937&), std::size_t length, unsigned seed) {
  std::mt19937 random(seed);
  std::u16string text;
  while (text.size() < length) text += piece(random);
  return text;
}

std::u16string every_unit() {
  std::u16string units(kAllUnits, u'\0');
  std::iota(units.begin(), units.end(), u'\0');
  return units;
}

struct Way {
  const char* name;
  std::size_t (*count)(std::u16string_view);
};

// All the ways to count that this processor has; tests name the one that fails.
std::vector<Way> ways() {
  std::vector<Way> result = {{"the one that is chosen", double_byte_count},
                             {"by character", internal::double_byte_count_by_character},
                             {"16-byte vectors", internal::double_byte_count_sse2}};
  if (has_avx2()) {
    result.push_back({"32-byte vectors", [](std::u16string_view text) {
                        return internal::double_byte_count_avx2(text.data(), text.size());
                      }});
  }
  return result;
}

// By definition: the characters whose code is negative.
std::size_t expected_count(std::u16string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char16_t character) { return ansi_code(character) < 0; }));
}

TEST(DoubleByteCount, OfEveryUnitAtEveryPlaceOfABlock) {
  for (const Way& way : ways()) {
    for (const char16_t other : {u'a', u'中', u'，'}) {
      std::u16string text(131, other);
      for (std::size_t unit = 0; unit < kAllUnits; ++unit) {
        const std::size_t place = unit % text.size();
        text[place] = static_cast<char16_t>(unit);
        ASSERT_EQ(way.count(text), expected_count(text)) << way.name << ": " << std::hex << unit << " at " << place;
        text[place] = other;
      }
    }
  }
}

TEST(DoubleByteCount, OfEveryUnitRepeated) {
  for (const Way& way : ways()) {
    for (std::size_t unit = 0; unit < kAllUnits; ++unit) {
      const std::u16string text(kLongestRun, static_cast<char16_t>(unit));
      ASSERT_EQ(way.count(text), ansi_code(text[0]) < 0 ? kLongestRun : 0) << way.name << ": " << std::hex << unit;
    }
  }
}

TEST(DoubleByteCount, OfAllUnitsFromEveryStart) {
  const std::u16string units = every_unit();
  for (const Way& way : ways()) {
    for (std::size_t start = 0; start <= kLongestRun; ++start) {
      const std::u16string_view text = std::u16string_view(units).substr(start);
      ASSERT_EQ(way.count(text), expected_count(text)) << way.name << ": " << start;
    }
  }
}

TEST(DoubleByteCount, OfEveryKindOfTextAtEveryLengthAndAlignment) {
  unsigned seed = 1;
  for (const auto piece : {ascii, chinese, punctuation, any_unit, mixture}) {
    const std::u16string text = text_of(piece, kLongestRun + kAlignments, seed++);
    for (const Way& way : ways()) {
      for (std::size_t start = 0; start < kAlignments; ++start) {
        for (std::size_t length = 0; length <= kLongestRun; ++length) {
          const std::u16string_view part = std::u16string_view(text).substr(start, length);
          ASSERT_EQ(way.count(part), expected_count(part)) << way.name << ": " << start << " " << length;
        }
      }
    }
  }
}

// Vector code counts in bytes on its way, which must be summed up before they wrap.
TEST(DoubleByteCount, OfLongTexts) {
  for (const Way& way : ways()) {
    SCOPED_TRACE(way.name);
    for (const std::size_t length : {1024U, 4097U, 32766U, 1'000'000U}) {
      EXPECT_EQ(way.count(std::u16string(length, u'中')), length);
      EXPECT_EQ(way.count(std::u16string(length, u'，')), length);
      EXPECT_EQ(way.count(std::u16string(length, u'α')), length);
      EXPECT_EQ(way.count(std::u16string(length, u'a')), 0U);
      const std::u16string text = text_of(mixture, length, static_cast<unsigned>(length));
      EXPECT_EQ(way.count(text), expected_count(text));
    }
  }
}

}  // namespace
}  // namespace corvelle
