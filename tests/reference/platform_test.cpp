// The model against the platform, where the platform is the definition: upper-casing, and what a number is.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleauto.h>

#include "tests/reference/arguments.h"
#include "tests/reference/code_page.h"
#include "tests/reference/comparison.h"
#include "tests/reference/decimal_model.h"

namespace corvelle {
namespace {

bool is_letter_or_digit(std::int16_t code) { return (code >= 48 && code <= 57) || (code >= 65 && code <= 90); }

TEST(ReferencePlatform, UpperCaseDiffersOnlyWhereNoOperationCanTell) {
  for (int unit = 0; unit < 0x10000; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    auto upper = static_cast<wchar_t>(character);
    CharUpperBuffW(&upper, 1);
    const std::int16_t platform = reference::ansi_code(static_cast<char16_t>(upper));
    const std::int16_t model = reference::ansi_code(reference::upper_case(character));
    const bool can_tell = is_letter_or_digit(platform) || is_letter_or_digit(model);
    ASSERT_TRUE(!can_tell || platform == model) << std::hex << unit;
  }
}

HRESULT platform_reading(std::u16string_view text) {
  double value = 0;
  BSTR bstr = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
  const LCID american = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
  const HRESULT result = VarR8FromStr(bstr, american, LOCALE_NOUSEROVERRIDE, &value);
  SysFreeString(bstr);
  return result;
}

// Texts of which the platform's own reading is known to be wrong: it stops at a NUL, and lets an exponent of ten digits
// wrap around.
bool misread(std::u16string_view text) {
  const std::size_t e = text.find_first_of(u"eE");
  return text.find(u'\0') != text.npos || (e != text.npos && text.size() - e > 9);
}

TEST(ReferencePlatform, TakesTheSameTextsForNumbers) {
  const reference::Symbols american{.grouping_separator = u",", .currency = u"$"};
  testing::RandomChoices choices(936);
  constexpr std::u16string_view kSymbols = u"0123456789+-.,eE ()$&Hh\t";
  int numbers = 0;
  for (int i = 0; i < 200'000; ++i) {
    std::u16string text;
    if (choices.once_in(2)) {
      text = testing::numeric_text(choices);
    } else {
      for (std::uint32_t left = choices.below(9); left > 0; --left) text += choices.one_of(kSymbols);
    }
    if (text.size() > 300 || misread(text)) continue;
    const HRESULT result = platform_reading(text);
    if (result == DISP_E_OVERFLOW) continue;  // near the largest numbers its arithmetic overflows early
    numbers += result == S_OK ? 1 : 0;
    ASSERT_EQ(is_number(text, american), result == S_OK) << testing::internal::shown(text);
  }
  EXPECT_GT(numbers, 50'000);
}

}  // namespace
}  // namespace corvelle
