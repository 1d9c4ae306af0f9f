// The rows that the native tests run, through both bindings of the registered component.
#include <gtest/gtest.h>

#include <cwchar>

#include "component/class_description.h"
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
#include "tests/component/host.h"

namespace corvelle::testing {
namespace {

constexpr std::size_t kInheritedMembers = 7;

struct Called {
  ComPtr<IDispatch> object;
  const Operation* operation = nullptr;
  std::size_t place = 0;  // in vtable order
};

class Cases : public ::testing::Test {
 protected:
  void run_both_ways(std::span<const OperationCase> cases) {
    run_late_bound(cases);
    run_early_bound(cases);
  }

 private:
  // "Center" is an operation of ClsValidate, "ClsVexApp.Set_Str" one of ClsVexApp.
  Called find(std::u16string_view name) {
    constexpr std::u16string_view kVexAppPrefix = u"ClsVexApp.";
    const bool of_vex_app = name.starts_with(kVexAppPrefix);
    const ClassDescription& description = of_vex_app ? kClsVexAppClass : kClsValidateClass;
    if (of_vex_app) name.remove_prefix(kVexAppPrefix.size());
    for (std::size_t i = 0; i < description.operations.size(); ++i) {
      if (description.operations[i].name == name) {
        return {of_vex_app ? vex_app_ : validate_, &description.operations[i], i};
      }
    }
    ADD_FAILURE() << "no operation " << utf8(name);
    return {};
  }

  void run_late_bound(std::span<const OperationCase> cases) {
    for (const OperationCase& row : cases) {
      SCOPED_TRACE(utf8(row.operation) + ", late bound: " + row.reason);
      const Called called = find(row.operation);
      ASSERT_NE(called.operation, nullptr);
      Arguments arguments;
      append(row.arguments, *called.operation, arguments);
      const Outcome outcome = invoke(called.object.Get(), called.operation->dispid, arguments);
      compare(row, outcome.result == DISP_E_EXCEPTION ? outcome.scode : outcome.result, outcome.value.get());
    }
  }

  void run_early_bound(std::span<const OperationCase> cases) {
    for (const OperationCase& row : cases) {
      SCOPED_TRACE(utf8(row.operation) + ", early bound: " + row.reason);
      const Called called = find(row.operation);
      ASSERT_NE(called.operation, nullptr);
      ScopedVariant result;
      const HRESULT returned = call_early_bound(called, row.arguments, result.get());
      compare(row, returned, result.get());
    }
  }

  // A row's number is a date where the parameter is one.
  static void append(std::span<const Value> values, const Operation& operation, Arguments& arguments) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (operation.parameters()[i].type == VT_DATE) {
        arguments.date(std::get<double>(values[i]));
      } else {
        arguments.value(values[i]);
      }
    }
  }

  // Calls through the vtable with exactly the declared types, as a compiled host would.
  static HRESULT call_early_bound(const Called& called, std::span<const Value> values, VARIANT& result) {
    const Operation& operation = *called.operation;
    Arguments given;
    append(values, operation, given);
    const DISPPARAMS parameters = given.parameters();
    std::vector<VARIANT> arguments(operation.parameter_count + 1);
    std::vector<VARTYPE> types(arguments.size());
    std::vector<VARIANT*> pointers(arguments.size());
    std::vector<ScopedVariant> storage(arguments.size());
    for (std::size_t i = 0; i < operation.parameter_count; ++i) {
      const Parameter& parameter = operation.parameters()[i];
      VARIANT& held = storage[i].get();
      if (i < values.size()) {
        EXPECT_EQ(VariantChangeType(&held, &parameters.rgvarg[values.size() - 1 - i], 0, parameter.value_type()), S_OK);
      } else if (parameter.default_value.kind == DefaultValue::Kind::text) {
        V_VT(&held) = VT_BSTR;
        V_BSTR(&held) = SysAllocString(parameter.default_value.text);
      } else {
        V_VT(&held) = VT_I2;
        V_I2(&held) = parameter.default_value.int16;
      }
      VariantInit(&arguments[i]);
      arguments[i] = held;
      if (parameter.by_reference()) {
        V_VT(&arguments[i]) = parameter.type;
        V_BYREF(&arguments[i]) = &V_I2(&held);
      }
      types[i] = parameter.type;
      pointers[i] = &arguments[i];
    }
    std::size_t count = operation.parameter_count;
    VARIANT received;
    VariantInit(&received);
    if (operation.result != VT_VOID) {
      VARIANT& out = arguments[count];
      VariantInit(&out);
      V_VT(&out) = static_cast<VARTYPE>(operation.result | VT_BYREF);
      V_BYREF(&out) = operation.result == VT_VARIANT ? static_cast<void*>(&received) : &V_I2(&received);
      types[count] = V_VT(&out);
      pointers[count] = &out;
      ++count;
    }
    ScopedVariant returned;
    const auto offset = static_cast<ULONG_PTR>((kInheritedMembers + called.place) * sizeof(void*));
    EXPECT_EQ(DispCallFunc(vtable_of(called).Get(), offset, CC_STDCALL, VT_ERROR, static_cast<UINT>(count),
                           types.data(), pointers.data(), returned.receive()),
              S_OK);
    const HRESULT status = V_ERROR(&returned.get());
    if (operation.result != VT_VARIANT && operation.result != VT_VOID && SUCCEEDED(status)) {
      V_VT(&received) = operation.result;
    }
    result = received;
    return status;
  }

  static ComPtr<IUnknown> vtable_of(const Called& called) {
    ComPtr<IUnknown> own;
    const bool of_validate = called.operation >= kClsValidateOperations.data() &&
                             called.operation < kClsValidateOperations.data() + kClsValidateOperations.size();
    EXPECT_EQ(called.object->QueryInterface(of_validate ? kClsValidateInterfaceId : kClsVexAppInterfaceId,
                                            reinterpret_cast<void**>(own.GetAddressOf())),
              S_OK);
    return own;
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
  ComPtr<IDispatch> validate_ = create(L"Corvelle.ClsValidate");
  ComPtr<IDispatch> vex_app_ = create(L"Corvelle.ClsVexApp");
};

TEST_F(Cases, OfWidth) { run_both_ways(width_cases()); }
TEST_F(Cases, OfFields) { run_both_ways(fields_cases()); }
TEST_F(Cases, OfSubstrings) { run_both_ways(substrings_cases()); }
TEST_F(Cases, OfReplacement) { run_both_ways(replacement_cases()); }
TEST_F(Cases, OfPinyin) { run_both_ways(pinyin_cases()); }
TEST_F(Cases, OfTheTextSlot) { run_both_ways(text_slot_cases()); }
// The rows are of mainland China's locale; elsewhere its currency symbol makes no number.
TEST_F(Cases, OfDecimals) {
  wchar_t currency[16] = {};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SCURRENCY, currency, 16);
  std::vector<OperationCase> cases = decimal_cases();
  for (OperationCase& row : cases) {
    const auto& given = std::get<std::u16string>(row.arguments.front());
    if (as_text(currency) != u"¥" && given.find(u'¥') != std::u16string::npos) row.expected = row.arguments.front();
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

}  // namespace
}  // namespace corvelle::testing
