#include "datenum/decimal_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "datenum/decimal_number.h"
#include "tests/cases/decimal_cases.h"
#include "tests/datenum/locale_symbols.h"
#include "tests/support/utf8.h"

namespace corvelle {
namespace {

using testing::native;
using testing::utf8;
using testing::value_of;

TEST(DecimalFormat, NativeCases) {
  using View = std::u16string_view;
  testing::run_natively(testing::decimal_cases(),
                        {{u"GetDecimalFmt", native([](View text) { return GetDecimalFmt(text); })},
                         {u"GetDecimalFmt_4", native([](View text) { return GetDecimalFmt_4(text, kChinese); })},
                         {u"GetDecimalFmt_8", native([](View text) { return GetDecimalFmt_8(text, kChinese); })},
                         {u"GetDecimalFmt_Bus", native([](View text, std::int16_t index) {
                            return GetDecimalFmt_Bus(text, index, kChinese);
                          })}});
}

TEST(DecimalFormat, GivesTheSameThroughEveryOperation) {
  for (const auto& row : testing::decimal_cases()) {
    const auto& text = std::get<std::u16string>(row.arguments[0]);
    EXPECT_EQ(GetDecimalFmt_Bus(text, 4, kChinese), value_of(GetDecimalFmt_4(text, kChinese)).view()) << row.reason;
    EXPECT_EQ(GetDecimalFmt_Bus(text, 8, kChinese), value_of(GetDecimalFmt_8(text, kChinese)).view()) << row.reason;
  }
}

TEST(DecimalFormat, ReadsAndWritesGermanNumbers) {
  EXPECT_EQ(GetDecimalFmt_4(u"1.234,5", kGerman), u"1234,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"0,03125", kGerman), u"0,0313");
  EXPECT_EQ(GetDecimalFmt_4(u"1.5", kGerman), u"15,0000");
  EXPECT_EQ(GetDecimalFmt_4(u".5", kGerman), u".5");
  EXPECT_EQ(GetDecimalFmt_4(u"1,2,3", kGerman), u"1,2,3");
  EXPECT_EQ(GetDecimalFmt_4(u"-12,5 €", kGerman), u"-12,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"$12", kGerman), u"$12");
  EXPECT_EQ(GetDecimalFmt_8(u"1e-3", kGerman), u"0,00100000");
  EXPECT_EQ(GetDecimalFmt_Bus(u"2,5", 2, kGerman), u"2,50");
}

TEST(DecimalFormat, ReadsAndWritesAmericanNumbers) {
  EXPECT_EQ(GetDecimalFmt_4(u"$1,234.5", kAmerican), u"1234.5000");
  EXPECT_EQ(GetDecimalFmt_4(u"($12)", kAmerican), u"-12.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"¥12", kAmerican), u"¥12");
}

// The last digit that can change a result: of the longest number, the one behind the last decimal place.
TEST(DecimalFormat, RoundsTheLongestNumber) {
  const std::u16string whole(309, u'1');
  EXPECT_EQ(GetDecimalFmt_8(whole + u".000000005", kChinese), whole + u".00000001");
  EXPECT_EQ(GetDecimalFmt_8(whole + u".000000004", kChinese), whole + u".00000000");
}

TEST(DecimalFormat, TakesGroupingBehindTheNumber) {
  EXPECT_EQ(GetDecimalFmt_4(u"12 ,", kChinese), u"12.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"12 ,, ,", kChinese), u"12.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"(12 ,)", kChinese), u"-12.0000");
}

TEST(DecimalFormat, GroupsByNoBreakSpacesAndThenByPlainOnes) {
  EXPECT_EQ(GetDecimalFmt_4(u"1\u00A0"
                            u"234,5",
                            kPolish),
            u"1234,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"1 234,5", kPolish), u"1234,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"zł 1 234,5 ", kPolish), u"1234,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"1e 3", kPolish), u"1000,0000");
  EXPECT_EQ(GetDecimalFmt_4(u"1\u202F"
                            u"234,5",
                            kPolish),
            u"1\u202F"
            u"234,5");
}

TEST(DecimalFormat, GroupsByPlainSpacesForNoOtherBlank) {
  NumberSymbols symbols = kPolish;
  symbols.grouping_separator = {u"."};
  EXPECT_EQ(GetDecimalFmt_4(u"1 234,5", symbols), u"1 234,5") << "the currency's no-break space";
  symbols.grouping_separator = {u"\u202F"};
  EXPECT_EQ(GetDecimalFmt_4(u"1 234,5", symbols), u"1 234,5") << "a narrow no-break space";
  symbols.grouping_separator = {u" "};
  symbols.currency_grouping_separator = {u"."};
  EXPECT_EQ(GetDecimalFmt_4(u"1 234,5", symbols), u"1234,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"1\u00A0"
                            u"234,5",
                            symbols),
            u"1\u00A0"
            u"234,5")
      << "a plain space";
}

TEST(DecimalFormat, UsesTheUsersOwnSymbols) {
  const NumberSymbols own{.decimal_separator = {u"|"},
                          .grouping_separator = {u"_"},
                          .negative_sign = {u"~"},
                          .positive_sign = {u"^"},
                          .currency = {u"RMB"},
                          .currency_decimal_separator = {u"."},
                          .currency_grouping_separator = {u","}};
  EXPECT_EQ(GetDecimalFmt_4(u"1_234|5", own), u"1234|5000");
  EXPECT_EQ(GetDecimalFmt_4(u"RMB 12|5", own), u"12|5000");
  EXPECT_EQ(GetDecimalFmt_4(u"12|5RMB", own), u"12|5000");
  EXPECT_EQ(GetDecimalFmt_4(u"RM12", own), u"RM12");
  EXPECT_EQ(GetDecimalFmt_4(u"RMB1,234.5", own), u"1234|5000") << "a currency's separators serve too";
  EXPECT_EQ(GetDecimalFmt_4(u"^12", own), u"12|0000");
  EXPECT_EQ(GetDecimalFmt_4(u"+12", own), u"+12");
  EXPECT_EQ(GetDecimalFmt_4(u"~12", own), u"-12|0000") << "a negative number is written with -";
  EXPECT_EQ(GetDecimalFmt_4(u"-12", own), u"-12");
  EXPECT_EQ(GetDecimalFmt_4(u"1e~2", own), u"0|0100");
}

// As the Numbers tab of the control panel leaves them, which has nothing to do with the currency's.
TEST(DecimalFormat, TakesTheCurrencysSeparatorsForWhatTheNumbersAreNot) {
  NumberSymbols swapped = kChinese;
  swapped.decimal_separator = {u","};
  swapped.grouping_separator = {u"."};
  EXPECT_EQ(GetDecimalFmt_4(u"1.234,5", swapped), u"1234,5000");
  EXPECT_EQ(GetDecimalFmt_4(u".5", swapped), u"0,5000") << "no group begins a number, so it is the currency's decimals";
  EXPECT_EQ(GetDecimalFmt_4(u"-.5.5", swapped), u"-0,5500");
  EXPECT_EQ(GetDecimalFmt_4(u"1,5", swapped), u"1,5000") << "the decimal separator is no other's group";
  EXPECT_EQ(GetDecimalFmt_4(u"1,5,5", swapped), u"1,5,5");
  NumberSymbols comma_for_both = kChinese;
  comma_for_both.decimal_separator = {u","};
  EXPECT_EQ(GetDecimalFmt_4(u"1,5", comma_for_both), u"1,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"1.5", comma_for_both), u"1,5000");
  EXPECT_EQ(GetDecimalFmt_4(u"1,5 ,", comma_for_both), u"1,5 ,");
}

TEST(DecimalFormat, HasNoExponentBehindMoney) {
  NumberSymbols symbols = kChinese;
  symbols.currency_decimal_separator = {u";"};
  symbols.currency_grouping_separator = {u"'"};
  EXPECT_EQ(GetDecimalFmt_4(u"1.5e1", symbols), u"15.0000");
  for (const char16_t* money : {u"¥1e1", u"1;5e1", u";5e1", u"1'0e1"})
    EXPECT_EQ(GetDecimalFmt_4(money, symbols), money);
  EXPECT_EQ(GetDecimalFmt_4(u"1e'1", symbols), u"10.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"1;5", symbols), u"1.5000");
}

TEST(DecimalFormat, HasNoGroupsBehindBits) {
  EXPECT_EQ(GetDecimalFmt_4(u"&HFF ", kChinese), u"255.0000");
  EXPECT_EQ(GetDecimalFmt_4(u"&HFF,", kChinese), u"&HFF,");
  EXPECT_EQ(GetDecimalFmt_4(u"&HFF ", kPolish), u"&HFF ");
  EXPECT_EQ(GetDecimalFmt_4(u"&HFF\t ", kPolish), u"255,0000") << "a row of blanks is one";
}

TEST(DecimalFormat, WritesALongSeparatorInFullAndReadsItsFirstCharacter) {
  const NumberSymbols longest{.decimal_separator = {u"1234567890abc"}};
  EXPECT_EQ(GetDecimalFmt_Bus(u"7", 1, longest), u"71234567890abc0");
  const NumberSymbols colons{.decimal_separator = {u"::"}};
  EXPECT_EQ(GetDecimalFmt_4(u"-9:99995", colons), u"-10::0000");
  EXPECT_EQ(GetDecimalFmt_4(u"9::9", colons), u"9::9");
}

TEST(DecimalFormat, HasTheUsualSymbolForSomeThatTheLocaleLacks) {
  EXPECT_EQ(GetDecimalFmt_4(u"-$1,234.5", NumberSymbols{}), u"-1234.5000");
  EXPECT_EQ(GetDecimalFmt_4(u"+1", NumberSymbols{}), u"1.0000");
  const NumberSymbols no_groups{.currency_grouping_separator = {u"'"}};
  EXPECT_EQ(GetDecimalFmt_4(u"1,234", no_groups), u"1,234");
  const NumberSymbols no_currency_decimals{.decimal_separator = {u";"}};
  EXPECT_EQ(GetDecimalFmt_4(u"3.9", no_currency_decimals), u"3.9");
}

TEST(DecimalFormat, HasNoSymbolThatIsTheEndOfItsText) {
  using namespace std::string_view_literals;
  for (const std::u16string_view text : {u"1\0"
                                         u"2"sv,
                                         u"\0"
                                         u"12"sv,
                                         u"12\0"sv,
                                         u"1e\0"
                                         u"2"sv}) {
    EXPECT_EQ(GetDecimalFmt_4(text, NumberSymbols{}), text);
    EXPECT_EQ(GetDecimalFmt_4(text, kChinese), text);
  }
}

std::uint64_t power_of_ten(std::size_t exponent) { return exponent == 0 ? 1 : 10 * power_of_ten(exponent - 1); }

// DIGITS / 10^`decimals` rounded to `places` by integer arithmetic; ten digits and eight places fit in 64 bits.
std::string rounded_by_arithmetic(std::uint64_t digits, std::size_t decimals, std::size_t places) {
  const std::uint64_t scaled = digits * power_of_ten(places);
  const std::uint64_t divisor = power_of_ten(decimals);
  const std::uint64_t whole = scaled / divisor + (scaled % divisor * 2 >= divisor ? 1 : 0);
  std::string text = std::to_string(whole);
  if (text.size() <= places) text.insert(0, places + 1 - text.size(), '0');
  return text.insert(text.size() - places, 1, '.');
}

TEST(DecimalFormat, RoundsAsIntegerArithmeticDoes) {
  std::mt19937 random(1966);
  for (int round = 0; round < 200'000; ++round) {
    std::string digits = std::to_string(random() % power_of_ten(1 + random() % 9));
    const std::size_t decimals = random() % 10;
    const std::size_t places = 1 + random() % kMaxPlaces;
    const std::string expected = rounded_by_arithmetic(std::stoull(digits), decimals, places);
    if (digits.size() <= decimals) digits.insert(0, decimals - digits.size(), '0');
    digits.insert(digits.size() - decimals, 1, '.');
    const std::u16string text(digits.begin(), digits.end());
    ASSERT_EQ(utf8(value_of(GetDecimalFmt_Bus(text, static_cast<std::int16_t>(places), kChinese))), expected)
        << digits << " with " << places << " places";
  }
}

TEST(DecimalFormat, MovesTheSeparatorByTheExponent) {
  std::u16string large = u"123456";
  std::u16string small = u"0.123456";
  for (int exponent = 1; exponent <= 300; ++exponent) {
    large += u'0';
    const std::u16string digits(std::u16string_view(decimal_text(exponent)));
    EXPECT_EQ(value_of(GetDecimalFmt_8(u"123456e" + digits, kChinese)).view(),
              value_of(GetDecimalFmt_8(large, kChinese)).view());
    EXPECT_EQ(value_of(GetDecimalFmt_8(u"1.23456e-" + digits, kChinese)).view(),
              value_of(GetDecimalFmt_8(small, kChinese)).view());
    small.insert(2, 1, u'0');
  }
}

TEST(ReadNumber, EndsWhereDoublesEnd) {
  const std::string limit =
      "1797693134862315807937289714053034150799341327100378269361737789804449682927647509466490179775872070963"
      "3028641669288791094655554785194040263065748867150582068190890200070838367627385484581771153176447573027"
      "0069855571366959622842914819860834936475292719074168444365510704342711559699508093042880177904174497792";
  std::mt19937 random(1024);
  for (int round = 0; round < 20'000; ++round) {
    std::string digits = limit;
    digits[random() % digits.size()] = static_cast<char>('0' + random() % 10);
    if (round % 3 == 0) digits.append(".000000000000001");
    const bool is_finite = std::isfinite(std::strtod(digits.c_str(), nullptr));
    DecimalNumber number;
    ASSERT_EQ(read_number(std::u16string(digits.begin(), digits.end()), kChinese, number), is_finite) << digits;
  }
  DecimalNumber number;
  EXPECT_FALSE(read_number(std::u16string(limit.begin(), limit.end()), kChinese, number));
  EXPECT_TRUE(read_number(std::u16string(limit.begin(), limit.end() - 1) + u"1", kChinese, number));
}

TEST(DecimalFormat, UsesTheUsersSymbolsWhereNoneAreGiven) {
  const NumberSymbols symbols = user_symbols();
  for (const auto& row : testing::decimal_cases()) {
    const auto& text = std::get<std::u16string>(row.arguments[0]);
    EXPECT_EQ(value_of(GetDecimalFmt_4(text)).view(), value_of(GetDecimalFmt_4(text, symbols)).view()) << row.reason;
    EXPECT_EQ(value_of(GetDecimalFmt_8(text)).view(), value_of(GetDecimalFmt_8(text, symbols)).view()) << row.reason;
    for (std::int16_t index = 0; index <= 9; ++index) {
      EXPECT_EQ(value_of(GetDecimalFmt_Bus(text, index)).view(),
                value_of(GetDecimalFmt_Bus(text, index, symbols)).view())
          << row.reason;
    }
  }
}

}  // namespace
}  // namespace corvelle
