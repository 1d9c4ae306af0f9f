// The text operations against their step-by-step twins, on random texts of few different characters, in which
// separators, markers and blanks meet and overlap, and on texts around the counters' bound.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <variant>

#include "tests/reference/text_operations.h"
#include "tests/support/utf8.h"
#include "text/ansi_code.h"
#include "text/classification.h"
#include "text/fields.h"
#include "text/replacement.h"
#include "text/substrings.h"

namespace corvelle {
namespace {

using String = std::u16string;
using Outcome = std::variant<String, ErrorNumber>;

template <class Operation>
Outcome outcome_of(Operation operation) {
  try {
    return String(std::u16string_view(operation()));
  } catch (const RuntimeError& error) {
    return error.number();
  }
}

// Both give the same text or the same error.
template <class Operation, class Twin>
void expect_same(Operation operation, Twin twin) {
  const Outcome expected = outcome_of(twin);
  const Outcome actual = outcome_of(operation);
  ASSERT_EQ(actual.index(), expected.index());
  ASSERT_TRUE(actual == expected);
}

class Random {
 public:
  std::int32_t number(std::int32_t least, std::int32_t most) {
    return std::uniform_int_distribution<std::int32_t>(least, most)(generator_);
  }
  String text(std::int32_t longest, std::u16string_view alphabet) {
    String result(static_cast<std::size_t>(number(0, longest)), u'\0');
    for (char16_t& unit : result) {
      unit = alphabet[static_cast<std::size_t>(number(0, static_cast<std::int32_t>(alphabet.size()) - 1))];
    }
    return result;
  }

 private:
  std::mt19937 generator_{936};
};

Text folder_of(const String& path) {
  return GetPath(path, [](std::u16string_view text, std::int16_t number, std::u16string_view separator) {
    return getStr_Pf(text, number, separator);
  });
}

// Every operation on `s`, with `a` and `b` as separators or markers and `m` and `n` as positions, widths or numbers.
void compare_all(const String& s, const String& a, const String& b, std::int32_t m, std::int32_t n) {
  SCOPED_TRACE(testing::utf8(s.substr(0, 60)) + " | " + testing::utf8(a) + " | " + testing::utf8(b) + " | " +
               std::to_string(m) + " | " + std::to_string(n) + " | " + std::to_string(s.size()) + " characters");
  const auto flag = static_cast<std::int16_t>(n % 2);
  const auto field = static_cast<std::int16_t>(m);
  expect_same([&] { return Set_String1(s, m, flag); },
              [&] { return reference::Set_String1(s, m, flag, is_double_byte); });
  expect_same([&] { return Get_String(s, m, n); }, [&] { return reference::Get_String(s, m, n, is_double_byte); });
  expect_same([&] { return getStr_Pf(s, field, a); }, [&] { return reference::getStr_Pf(s, field, a); });
  expect_same([&] { return getStrDo_Pf(s, field, a); }, [&] { return reference::getStrDo_Pf(s, field, a); });
  expect_same([&] { return Center(s); }, [&] { return reference::Center(s); });
  expect_same([&] { return getNum(s); }, [&] { return reference::getNum(s); });
  expect_same([&] { return Get_Str(s, a); }, [&] { return reference::Get_Str(s, a); });
  expect_same([&] { return getString_P(s, a, b); }, [&] { return reference::getString_P(s, a, b); });
  expect_same([&] { return Replace_Str(s, a, b); }, [&] { return reference::Replace_Str(s, a, b); });
  expect_same([&] { return ConversionStr_Short(s); }, [&] { return reference::ConversionStr_Short(s); });
}

TEST(Reference, ShortTextsOfFewCharacters) {
  Random random;
  for (int round = 0; round < 20000 && !::testing::Test::HasFatalFailure(); ++round) {
    compare_all(random.text(20, u" -+中1"), random.text(3, u"-+"), random.text(2, u"-+ "), random.number(-2, 24),
                random.number(-2, 30));
  }
}

TEST(Reference, Paths) {
  Random random;
  for (int round = 0; round < 2000 && !::testing::Test::HasFatalFailure(); ++round) {
    const String path = random.text(20, u"\\a/中 ");
    expect_same([&] { return folder_of(path); }, [&] { return reference::GetPath(path); });
  }
}

TEST(Reference, TextsAroundTheCounterBound) {
  Random random;
  for (int round = 0; round < 120 && !::testing::Test::HasFatalFailure(); ++round) {
    String s(static_cast<std::size_t>(random.number(32763, 32770)), random.number(0, 3) == 0 ? u'中' : u'a');
    for (int change = 0; change < 6; ++change) {
      const std::int32_t near_the_end = static_cast<std::int32_t>(s.size()) - random.number(1, 8);
      const std::int32_t at = random.number(0, 1) == 0 ? near_the_end : random.number(0, 40);
      s[static_cast<std::size_t>(at)] = u" -+"[random.number(0, 2)];
    }
    compare_all(s, random.text(2, u"-+"), random.text(2, u"-+"), random.number(32760, 32770),
                random.number(32760, 32770));
    compare_all(s, u"-", u"+", random.number(1, 3), random.number(32760, 32770));
    compare_all(s, u"-", u"+-", 1, random.number(65526, 65536));
  }
}

}  // namespace
}  // namespace corvelle
