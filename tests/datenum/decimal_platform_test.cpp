// Number texts held against the platform's own conversion and formatting, in the locale that the program runs in.
// What differs, and why, is listed in docs/reference/decimals.md; what is left out below is one of its rows.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "base/errors.h"
#include "datenum/decimal_format.h"
#include "datenum/decimal_number.h"
#include "tests/datenum/locale_symbols.h"
#include "tests/datenum/platform_number.h"
#include "tests/datenum/user_setting.h"
#include "tests/support/result.h"
#include "tests/support/utf8.h"

namespace corvelle {
namespace {

using testing::agree;
using testing::has_ten_digit_exponent;
using testing::own_number;
using testing::platform_format;
using testing::platform_number;
using testing::shown;
using testing::utf8;
using testing::value_of;

// The characters in CORVELLE_USER_SEPARATORS, where it is set, are the user's own decimal and grouping separators.
const char* user_separators() { return std::getenv("CORVELLE_USER_SEPARATORS"); }

class UserSeparators : public ::testing::Environment {
 public:
  void SetUp() override {
    if (const char* own = user_separators()) {
      decimal_.emplace(LOCALE_SDECIMAL, std::wstring(1, own[0]));
      grouping_.emplace(LOCALE_STHOUSAND, std::wstring(1, own[1]));
    }
  }
  void TearDown() override {
    grouping_.reset();
    decimal_.reset();
  }

 private:
  std::optional<testing::UserSetting> decimal_;
  std::optional<testing::UserSetting> grouping_;
};

const ::testing::Environment* const kUserSeparators = ::testing::AddGlobalTestEnvironment(new UserSeparators);

const NumberSymbols& symbols() {
  static const NumberSymbols read = user_symbols();
  return read;
}

void expect_agreement(std::u16string_view text) {
  if (has_ten_digit_exponent(text)) return;
  const auto own = own_number(text, symbols());
  const auto platform = platform_number(text);
  EXPECT_TRUE(agree(own, platform)) << "'" << utf8(text) << "' is " << shown(own) << ", the platform says "
                                    << shown(platform);
}

std::vector<std::u16string> words() {
  return {u"1",
          u"0",
          u"7",
          symbols().decimal_separator.units,
          {symbols().grouping_separator.units},
          u"+",
          u"-",
          u" ",
          u"(",
          u")",
          u"e",
          symbols().currency.units,
          u"&H",
          u"&o",
          u"F",
          u"x"};
}

void for_each_sequence(std::size_t length, const std::function<void(std::u16string_view)>& visit) {
  const auto choices = words();
  std::vector<std::size_t> chosen(length, 0);
  std::u16string text;
  for (;;) {
    text.clear();
    for (const std::size_t word : chosen) text += choices[word];
    visit(text);
    std::size_t place = 0;
    while (place < length && ++chosen[place] == choices.size()) chosen[place++] = 0;
    if (place == length) return;
  }
}

struct LocaleCase {
  std::string name;
  const char* currency;
  char16_t decimal;
  char16_t grouping;
};
const LocaleCase kLocaleCases[] = {
    {"zh_CN.UTF-8", "¥", u'.', u','},      {"en_US.UTF-8", "$", u'.', u','},       {"de_DE.UTF-8", "€", u',', u'.'},
    {"fr_FR.UTF-8", "€", u',', u'\u00A0'}, {"pl_PL.UTF-8", "zł", u',', u'\u00A0'},
};

TEST(DecimalPlatform, RunsInTheLocaleThatIsNamed) {
  const std::string locale = std::getenv("CORVELLE_LOCALE") != nullptr ? std::getenv("CORVELLE_LOCALE") : "zh_CN.UTF-8";
  const auto* expected = std::find_if(std::begin(kLocaleCases), std::end(kLocaleCases),
                                      [&](const LocaleCase& row) { return row.name == locale; });
  ASSERT_NE(expected, std::end(kLocaleCases)) << locale;
  const char* const own = user_separators();
  EXPECT_EQ(utf8(symbols().currency.view()), expected->currency);
  EXPECT_EQ(symbols().decimal_separator.units[0], own != nullptr ? own[0] : expected->decimal);
  EXPECT_EQ(symbols().grouping_separator.units[0], own != nullptr ? own[1] : expected->grouping);
}

TEST(DecimalPlatform, ReadsEverySequenceOfUpToFiveSymbolsAlike) {
  for (std::size_t length = 0; length <= 5 && !HasFailure(); ++length) for_each_sequence(length, expect_agreement);
}

TEST(DecimalPlatform, ReadsLongerSequencesAlike) {
  std::mt19937 random(2006);
  const auto choices = words();
  int numbers = 0;
  for (int round = 0; round < 200'000 && !HasFailure(); ++round) {
    std::u16string text;
    for (std::size_t length = 6 + random() % 9; length > 0; --length) {
      // Mostly digits, or next to nothing would be a number.
      text += choices[random() % 3 != 0 ? random() % 3 : random() % choices.size()];
    }
    expect_agreement(text);
    if (own_number(text, symbols())) ++numbers;
  }
  EXPECT_GT(numbers, 10'000);
}

TEST(DecimalPlatform, TakesEveryCharacterAlike) {
  for (int unit = 1; unit <= 0xFFFF; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    for (const auto& text :
         {std::u16string{character}, std::u16string{character, u'7'}, std::u16string{u'7', character},
          std::u16string{u'1', character, u'7'}, std::u16string{u'-', character, u'7'},
          std::u16string{u'1', u'e', character, u'7'}, std::u16string{u'&', character, u'7'}}) {
      expect_agreement(text);
    }
  }
}

TEST(DecimalPlatform, ReadsPowersOfTenAlike) {
  for (int exponent = -400; exponent <= 400; ++exponent) {
    for (const std::u16string mantissa : {u"1", u"17", u"1797", u"0", u"-1"}) {
      expect_agreement((mantissa + u"e").append(decimal_text(exponent)));
    }
  }
  expect_agreement(u"1e999999999");
  expect_agreement(u"1e-999999999");
}

// The platform's arithmetic overflows shortly before the largest double, 1.7976931348623157e308.
TEST(DecimalPlatform, EndsShortlyAfterThePlatform) {
  int refused = 0;
  for (std::int64_t decimals = 7976931348620000; decimals < 7976931348630000; ++decimals) {
    std::u16string text = u"1";
    text.append({symbols().decimal_separator.units[0]}).append(decimal_text(decimals)).append(u"e308");
    const auto own = own_number(text, symbols());
    const auto platform = platform_number(text);
    if (own && !platform) {
      EXPECT_GE(*own, 1.797693134862312e308) << utf8(text);
      ++refused;
    } else {
      EXPECT_TRUE(agree(own, platform)) << utf8(text);
    }
  }
  EXPECT_GT(refused, 0);
}

// The platform writes bits in digits beyond 9, and keeps zeros that begin a number with groups or an exponent.
bool is_misprinted(std::u16string_view text) {
  if (text.find(u'&') != std::u16string_view::npos) return true;
  const char16_t grouping = symbols().grouping_separator.units[0];
  const char16_t groups_or_exponent[] = {grouping, grouping == u'\u00A0' ? u' ' : grouping, u'e'};
  const auto first_digit = text.find_first_of(u"0123456789");
  return first_digit != std::u16string_view::npos && (text[first_digit] == u'0' || text.find(u'e') < first_digit) &&
         text.find_first_of(std::u16string_view(groups_or_exponent, 3)) != std::u16string_view::npos;
}

TEST(DecimalPlatform, FormatsEverySequenceOfUpToFourSymbolsAlike) {
  for (std::size_t length = 0; length <= 4 && !HasFailure(); ++length) {
    for_each_sequence(length, [](std::u16string_view text) {
      const auto own = own_number(text, symbols());
      if (own && (std::abs(*own) > 1e200 || is_misprinted(text))) return;
      EXPECT_EQ(utf8(value_of(GetDecimalFmt_4(text))), utf8(platform_format(text, 4))) << utf8(text);
    });
  }
}

// Symbols are asked for one by one, and not all where a text cannot be a number without some that it has not.
TEST(DecimalPlatform, AsksForEverySymbolThatATextNeeds) {
  for (std::size_t length = 0; length <= 5 && !HasFailure(); ++length) {
    for_each_sequence(length, [](std::u16string_view text) {
      EXPECT_EQ(value_of(GetDecimalFmt_4(text)).view(), value_of(GetDecimalFmt_4(text, symbols())).view())
          << utf8(text);
    });
  }
}

// A number of `count` digits, some with decimals and a sign, some about to carry.
std::u16string plain_number(std::mt19937& random, std::size_t count) {
  std::u16string digits;
  while (digits.size() < count) digits += static_cast<char16_t>(u'0' + random() % 10);
  if (random() % 8 == 0) std::fill(digits.begin() + 1, digits.end(), random() % 2 == 0 ? u'9' : u'4');
  if (random() % 4 != 0) digits.insert(random() % (digits.size() + 1), 1, symbols().decimal_separator.units[0]);
  if (random() % 3 == 0) digits.insert(0, 1, symbols().negative_sign.units[0]);
  return digits;
}

TEST(DecimalPlatform, FormatsPlainNumbersAlike) {
  std::mt19937 random(1999);
  for (int round = 0; round < 200'000; ++round) {
    const std::u16string text = plain_number(random, 1 + random() % (round % 10 == 0 ? 200 : 20));
    const auto places = static_cast<std::int16_t>(1 + random() % kMaxPlaces);
    ASSERT_EQ(utf8(value_of(GetDecimalFmt_Bus(text, places))), utf8(platform_format(text, places)))
        << utf8(text) << " with " << places << " places";
  }
}

}  // namespace
}  // namespace corvelle
