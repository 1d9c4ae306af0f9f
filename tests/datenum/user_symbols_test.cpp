// The user's own symbols, set as the control panel sets them.
#include <gtest/gtest.h>

#include "datenum/decimal_format.h"
#include "tests/datenum/locale_symbols.h"
#include "tests/datenum/platform_number.h"
#include "tests/datenum/user_setting.h"
#include "tests/reference/number_settings.h"
#include "tests/support/result.h"
#include "tests/support/utf8.h"

namespace corvelle {
namespace {

using namespace std::string_view_literals;
using testing::platform_format;
using testing::platform_number;
using testing::UserSetting;
using testing::value_of;

// First in the file: the platform keeps the symbols of its first conversion for the life of the process.
TEST(UserSymbols, DifferFromThePlatformOnlyAsListed) {
  const UserSetting decimal(LOCALE_SDECIMAL, L",");
  const UserSetting grouping(LOCALE_STHOUSAND, L".");
  const UserSetting negative(LOCALE_SNEGATIVESIGN, L"~");
  // The currency's separators are still "." and ",", and the platform lets them group everywhere.
  EXPECT_EQ(platform_number(u"1,5"), 15);
  EXPECT_EQ(GetDecimalFmt_4(u"1,5"), u"1,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"1.234,5"), u"1234,5000");
  EXPECT_EQ(platform_format(u"~5", 4), u"~5,0000");
  EXPECT_EQ(GetDecimalFmt_4(u"~5"), u"-5,0000");
  EXPECT_EQ(platform_number(u"-5"), std::nullopt);
  EXPECT_EQ(GetDecimalFmt_4(u"-5"), u"-5");
  EXPECT_EQ(platform_number(u"12\0x"sv), 12);
  EXPECT_EQ(GetDecimalFmt_4(u"12\0x"sv), u"12\0x"sv);
}

TEST(UserSymbols, HoldFromTheNextCallOn) {
  EXPECT_EQ(GetDecimalFmt_Bus(u"-2.5", 2), u"-2.50");
  {
    const UserSetting decimal(LOCALE_SDECIMAL, L";");
    EXPECT_EQ(GetDecimalFmt_Bus(u"-2;5", 2), u"-2;50");
    const UserSetting another(LOCALE_SDECIMAL, L"::");
    EXPECT_EQ(GetDecimalFmt_Bus(u"-2", 2), u"-2::00");
  }
  EXPECT_EQ(GetDecimalFmt_Bus(u"-2.5", 2), u"-2.50");
}

TEST(UserSymbols, AreAllReadWhereATextNeedsThem) {
  const UserSetting grouping(LOCALE_STHOUSAND, L"_");
  const UserSetting negative(LOCALE_SNEGATIVESIGN, L"~");
  const UserSetting positive(LOCALE_SPOSITIVESIGN, L"^");
  const UserSetting currency(LOCALE_SCURRENCY, L"RMB");
  const UserSetting currency_decimal(LOCALE_SMONDECIMALSEP, L";");
  const UserSetting currency_grouping(LOCALE_SMONTHOUSANDSEP, L":");
  EXPECT_EQ(GetDecimalFmt_4(u"1_234"), u"1234.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"1,234"), u"1,234");
  EXPECT_EQ(GetDecimalFmt_4(u"~1"), u"-1.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"^1"), u"1.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"+1"), u"+1");
  EXPECT_EQ(GetDecimalFmt_4(u"RMB1:234;5"), u"1234.5000");
}

// Symbols are asked for one by one, as a text needs them.
TEST(UserSymbols, AreAllMetWhereverTheyStand) {
  const UserSetting decimal(LOCALE_SDECIMAL, L"k");
  const UserSetting grouping(LOCALE_STHOUSAND, L" ");
  const UserSetting currency(LOCALE_SCURRENCY, L"gk");
  const UserSetting currency_decimal(LOCALE_SMONDECIMALSEP, L"m");
  const UserSetting currency_grouping(LOCALE_SMONTHOUSANDSEP, L"\u00A0");
  EXPECT_EQ(GetDecimalFmt_4(u"12 k5"), u"12k5000") << "behind a blank, where blanks group";
  EXPECT_EQ(GetDecimalFmt_4(u"12\u00A0m5"), u"12k5000") << "where a currency's blanks do";
  EXPECT_EQ(GetDecimalFmt_4(u"12\u2003m5"), u"12\u2003m5") << "where others do";
  EXPECT_EQ(GetDecimalFmt_4(u" k5"), u"0k5000");
  EXPECT_EQ(GetDecimalFmt_4(u"m5"), u"0k5000");
  EXPECT_EQ(GetDecimalFmt_4(u"gk12"), u"12k0000");
  EXPECT_EQ(GetDecimalFmt_4(u"12x"), u"12x");
}

TEST(UserSymbols, AreReadWhereTheNumbersTabAloneWasChanged) {
  const UserSetting decimal(LOCALE_SDECIMAL, L",");
  const UserSetting grouping(LOCALE_STHOUSAND, L".");
  const NumberSymbols given = user_symbols();
  for (const char16_t* text : {u".5", u"-.5", u"1.5", u"1,5", u"1.234,5", u"1,5,5", u"¥.5", u"1.5e1"}) {
    EXPECT_EQ(value_of(GetDecimalFmt_4(text)).view(), value_of(GetDecimalFmt_4(text, given)).view())
        << testing::utf8(text);
  }
  EXPECT_EQ(GetDecimalFmt_4(u".5"), u"0,5000");
}

TEST(UserSymbols, AreTheUsualOnesWhereTheUserLeftNone) {
  const testing::UserSymbolsSetting none(NumberSymbols{});
  EXPECT_EQ(GetDecimalFmt_4(u"-$1,234.5"), u"-1234.5000");
  const UserSetting apostrophe(LOCALE_SMONTHOUSANDSEP, L"'");
  EXPECT_EQ(GetDecimalFmt_4(u"1,234"), u"1,234");
  const UserSetting semicolon(LOCALE_SDECIMAL, L";");
  EXPECT_EQ(GetDecimalFmt_4(u"3.9"), u"3.9");
}

TEST(UserSymbols, AreReadAsGivenOnesAre) {
  testing::RandomChoices choices(15);
  int numbers = 0;
  for (std::int16_t setting = 0; setting < 300 && !HasFailure(); ++setting) {
    const reference::Symbols symbols = testing::number_setting(setting);
    const NumberSymbols given = testing::for_product(symbols);
    const testing::UserSymbolsSetting set(given);
    for (int i = 0; i < 200; ++i) {
      const std::u16string text = testing::number_text(choices, symbols);
      const Text by_users = value_of(GetDecimalFmt_4(text));
      EXPECT_EQ(by_users.view(), value_of(GetDecimalFmt_4(text, given)).view())
          << testing::utf8(text) << ", setting " << setting;
      numbers += by_users.view() != text ? 1 : 0;
    }
  }
  EXPECT_GT(numbers, 12'000);
}

}  // namespace
}  // namespace corvelle
