// Number texts held against the platform's own conversion, with symbols that users may have set. For a platform that
// reads a change of the user's symbols at once, as Windows does.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/datenum/platform_number.h"
#include "tests/datenum/user_setting.h"
#include "tests/reference/comparison.h"
#include "tests/reference/number_settings.h"

namespace corvelle {
namespace {

using testing::own_number;
using testing::platform_number;

bool has(std::u16string_view symbols, char16_t symbol) { return symbols.find(symbol) != std::u16string_view::npos; }

// Settings of which docs/reference/decimals.md says that they are read otherwise.
bool is_read_otherwise(const reference::Symbols& symbols) {
  const auto read = [](const std::u16string& symbol, char16_t otherwise) {
    return symbol.empty() ? otherwise : symbol.front();
  };
  const char16_t decimal = read(symbols.decimal_separator, u'.');
  const char16_t grouping = read(symbols.grouping_separator, u'\0');
  const char16_t groups[] = {grouping, grouping == u'\u00A0' ? u' ' : u'\0',
                             read(symbols.currency_grouping_separator, u',')};
  const char16_t negative = read(symbols.negative_sign, u'-');
  const char16_t positive = read(symbols.positive_sign, u'+');
  const char16_t more_than_signs[] = {groups[0], groups[1], groups[2], read(symbols.currency_decimal_separator, u'\0')};
  return has({groups + 1, 2}, decimal) || has({more_than_signs, 4}, negative) || has({more_than_signs, 4}, positive) ||
         negative == positive;
}

// Of texts with a NUL, and of the largest numbers, it says the same. Where the currency has no decimal separator, Wine
// 10 reads on behind the end of a text without a digit.
bool is_read_otherwise(std::u16string_view text, std::optional<double> own, std::optional<double> platform) {
  const bool has_digit = text.find_first_of(u"0123456789") != std::u16string_view::npos;
  return !has_digit || has(text, u'\0') || testing::has_ten_digit_exponent(text) || std::abs(own.value_or(0)) > 1e307 ||
         std::abs(platform.value_or(0)) > 1e307;
}

struct Agreement {
  int settings = 0;
  int numbers = 0;
  int others = 0;
};

void expect_agreement(std::u16string_view text, std::int16_t setting, const NumberSymbols& symbols, Agreement& seen) {
  const auto own = own_number(text, symbols);
  const auto platform = platform_number(text);
  if (is_read_otherwise(text, own, platform)) return;
  EXPECT_TRUE(testing::agree(own, platform))
      << testing::internal::shown(std::u16string(text)) << " is " << testing::shown(own) << ", the platform says "
      << testing::shown(platform) << ", setting " << setting;
  ++(own ? seen.numbers : seen.others);
}

TEST(UserSymbolsPlatform, ReadsEverySettingAlike) {
  testing::RandomChoices choices(2006);
  Agreement seen;
  for (std::int16_t setting = 0; setting < testing::kSettings && !HasFailure(); ++setting) {
    const reference::Symbols symbols = testing::number_setting(setting);
    if (is_read_otherwise(symbols)) continue;
    ++seen.settings;
    const testing::UserSymbolsSetting set(testing::for_product(symbols));
    const NumberSymbols read = user_symbols();
    for (int i = 0; i < 200; ++i) expect_agreement(testing::number_text(choices, symbols), setting, read, seen);
  }
  EXPECT_GT(seen.settings, testing::kSettings / 4);
  EXPECT_GT(seen.numbers, 40 * seen.settings);
  EXPECT_GT(seen.others, 40 * seen.settings);
}

TEST(UserSymbolsPlatform, ReadsTheLocalesOwnAlike) {
  testing::RandomChoices choices(1966);
  const NumberSymbols symbols = user_symbols();
  reference::Symbols words;
  words.decimal_separator = symbols.decimal_separator.view();
  words.grouping_separator = symbols.grouping_separator.view();
  words.negative_sign = symbols.negative_sign.view();
  words.positive_sign = symbols.positive_sign.view();
  words.currency = symbols.currency.view();
  words.currency_decimal_separator = symbols.currency_decimal_separator.view();
  words.currency_grouping_separator = symbols.currency_grouping_separator.view();
  Agreement seen;
  for (int i = 0; i < 200'000 && !HasFailure(); ++i)
    expect_agreement(testing::number_text(choices, words), -1, symbols, seen);
  EXPECT_GT(seen.numbers, 50'000);
  EXPECT_GT(seen.others, 50'000);
}

// In French and Polish numbers are grouped by spaces that do not break.
TEST(UserSymbolsPlatform, GroupsByPlainSpacesBesideNoBreakSpaces) {
  const testing::UserSymbolsSetting set(kPolish);
  EXPECT_EQ(platform_number(u"1 234,5"), 1234.5);
  EXPECT_EQ(own_number(u"1 234,5", user_symbols()), 1234.5);
}

}  // namespace
}  // namespace corvelle
