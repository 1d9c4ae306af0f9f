// The rows that the native tests run, through both bindings of the registered component.
#include <gtest/gtest.h>

#include <cwchar>

#include "component/error_report.h"
#include "tests/cases/classification_cases.h"
#include "tests/cases/date_cases.h"
#include "tests/cases/decimal_cases.h"
#include "tests/cases/fields_cases.h"
#include "tests/cases/pinyin_cases.h"
#include "tests/cases/replacement_cases.h"
#include "tests/cases/substrings_cases.h"
#include "tests/cases/text_slot_cases.h"
#include "tests/cases/width_cases.h"
#include "tests/component/published_call.h"

namespace corvelle::testing {
namespace {

class Cases : public ::testing::Test {
 protected:
  void run_both_ways(std::span<const OperationCase> cases) {
    for (const OperationCase& row : cases) {
      SCOPED_TRACE(utf8(row.operation) + ": " + row.reason);
      const Published called = objects_.find(row.operation);
      ASSERT_NE(called.operation, nullptr);
      Arguments arguments;
      append(row.arguments, *called.operation, arguments);
      run_late_bound(row, called, arguments);
      run_early_bound(row, called, arguments);
    }
  }

 private:
  static void run_late_bound(const OperationCase& row, const Published& called, const Arguments& arguments) {
    SCOPED_TRACE("late bound");
    const Outcome outcome = invoke(called.object.Get(), called.operation->dispid, arguments);
    compare(row, outcome.result == DISP_E_EXCEPTION ? outcome.scode : outcome.result, outcome.value.get());
  }

  static void run_early_bound(const OperationCase& row, const Published& called, const Arguments& arguments) {
    SCOPED_TRACE("early bound");
    VtableCall call(called, arguments);
    const HRESULT returned = call.run();
    compare(row, returned, call.result());
  }

  static void compare(const OperationCase& row, HRESULT status, const VARIANT& result) {
    if (const ErrorNumber* expected = std::get_if<ErrorNumber>(&row.expected)) {
      EXPECT_EQ(status, hresult_of(*expected));
      EXPECT_EQ(V_VT(&result), VT_EMPTY);
      return;
    }
    EXPECT_EQ(status, S_OK);
    const Value expected = std::get<Value>(row.expected);
    const Value got = value_of(result);
    EXPECT_TRUE(got == expected) << "gave " << shown(got) << " instead of " << shown(expected);
  }

  Apartment apartment_;
  PublishedObjects objects_;
};

TEST_F(Cases, OfWidth) { run_both_ways(width_cases()); }
TEST_F(Cases, OfFields) { run_both_ways(fields_cases()); }
TEST_F(Cases, OfSubstrings) { run_both_ways(substrings_cases()); }
TEST_F(Cases, OfReplacement) { run_both_ways(replacement_cases()); }
TEST_F(Cases, OfPinyin) { run_both_ways(pinyin_cases()); }
TEST_F(Cases, OfTheTextSlot) { run_both_ways(text_slot_cases()); }
std::u16string user_setting(LCTYPE type) {
  wchar_t setting[16] = {};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, type, setting, 16);
  return as_text(setting).data();
}

// `value` with the user's own separators and currency where a text of mainland China's locale has its own.
void use_own_symbols(Value& value) {
  auto* text = std::get_if<std::u16string>(&value);
  if (text == nullptr) return;
  const bool has_euros = user_setting(LOCALE_SCURRENCY) == u"€";
  for (char16_t& unit : *text) {
    switch (unit) {
      case u'.': unit = user_setting(LOCALE_SDECIMAL).front(); break;
      case u',': unit = user_setting(LOCALE_STHOUSAND).front(); break;
      case u'¥': unit = has_euros ? u'€' : unit; break;
      case u'€': unit = has_euros ? u'¥' : unit; break;
      default: break;
    }
  }
}

// The rows are of mainland China's locale; elsewhere its currency symbol makes no number.
TEST_F(Cases, OfDecimals) {
  std::vector<OperationCase> cases = decimal_cases();
  for (OperationCase& row : cases) {
    Value& given = row.arguments.front();
    use_own_symbols(given);
    if (auto* expected = std::get_if<Value>(&row.expected)) use_own_symbols(*expected);
    const bool has_yuan = std::get<std::u16string>(given).find(u'¥') != std::u16string::npos;
    if (has_yuan && user_setting(LOCALE_SCURRENCY) != u"¥") row.expected = given;
  }
  run_both_ways(cases);
}
TEST_F(Cases, OfDates) { run_both_ways(date_cases()); }
TEST_F(Cases, OfClassification) { run_both_ways(classification_cases()); }

TEST_F(Cases, RunUnderTheCodePageThatTheTestAsksFor) {
  if (const wchar_t* expected = _wgetenv(L"CORVELLE_EXPECTED_CODE_PAGE")) {
    EXPECT_EQ(GetACP(), static_cast<UINT>(std::wcstoul(expected, nullptr, 10)));
  }
}

TEST_F(Cases, RunInTheLocaleThatTheTestAsksFor) {
  const wchar_t* asked = _wgetenv(L"CORVELLE_LOCALE");  // as de_DE.UTF-8
  if (asked == nullptr) return;
  const std::u16string locale = user_setting(LOCALE_SISO639LANGNAME) + u'_' + user_setting(LOCALE_SISO3166CTRYNAME);
  EXPECT_EQ(utf8(locale), utf8(as_text(asked).substr(0, locale.size())));
}

}  // namespace
}  // namespace corvelle::testing
