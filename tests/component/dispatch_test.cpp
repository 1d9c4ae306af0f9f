// Invoke with every convention of automation.
#include <gtest/gtest.h>

#include "tests/component/host.h"

namespace corvelle::testing {
namespace {

constexpr DISPID kGetByte = 0x6003001F;
constexpr DISPID kGetStrPf = 0x60030020;
constexpr DISPID kSetString1 = 0x60030030;
constexpr DISPID kDateToStr = 0x60030034;
constexpr DISPID kDateFormat = 0x60030035;
constexpr DISPID kGetDays = 0x60030039;

class Dispatch : public ::testing::Test {
 protected:
  // The call must succeed with this value.
  void expect(const Value& expected, DISPID dispid, const Arguments& arguments, WORD flags = DISPATCH_METHOD) {
    const Outcome outcome = invoke(validate_.Get(), dispid, arguments, flags);
    EXPECT_EQ(outcome.result, S_OK) << utf8(outcome.description);
    EXPECT_EQ(outcome.wrong_argument, 99u);
    EXPECT_EQ(shown(value_of(outcome.value.get())), shown(expected));
  }

  // The call must be refused by automation itself, before any operation.
  void expect_refused(HRESULT expected, DISPID dispid, const Arguments& arguments, UINT wrong_argument = 99,
                      WORD flags = DISPATCH_METHOD) {
    const Outcome outcome = invoke(validate_.Get(), dispid, arguments, flags);
    EXPECT_EQ(outcome.result, expected);
    EXPECT_EQ(outcome.wrong_argument, wrong_argument);
    EXPECT_EQ(V_VT(&outcome.value.get()), VT_EMPTY);
  }

  Apartment apartment_;
  ComPtr<IDispatch> validate_ = create(L"Corvelle.ClsValidate");
};

TEST_F(Dispatch, PassesDeclaredTypes) { expect(int16(3), kGetByte, Arguments().text(u"中a").int16(0)); }

TEST_F(Dispatch, TakesMethodWithPropertyGet) {
  expect(int16(3), kGetByte, Arguments().text(u"中a").int16(0), DISPATCH_METHOD | DISPATCH_PROPERTYGET);
  expect_refused(DISP_E_MEMBERNOTFOUND, kGetByte, Arguments().text(u"a").int16(0), 99, DISPATCH_PROPERTYGET);
  expect_refused(DISP_E_MEMBERNOTFOUND, kGetByte, Arguments().text(u"a").int16(0), 99, DISPATCH_PROPERTYPUT);
  expect_refused(DISP_E_MEMBERNOTFOUND, kGetByte, Arguments().text(u"a").int16(0), 99, 0);
}

TEST_F(Dispatch, ANullTextIsEmpty) { expect(int16(0), kGetByte, Arguments().null_text().int16(0)); }

TEST_F(Dispatch, ConvertsOtherTypes) {
  expect(int16(4), kGetByte, Arguments().int32(-123).text(u"7"));
  expect(int16(2), kGetByte, Arguments().boolean(true).empty());  // "-1"
  expect(int16(0), kGetByte, Arguments().empty().real(2.5));
  expect(int16(29), kGetDays, Arguments().text(u"2000").real(2.0));
  expect(text(u"20060102"), kDateToStr, Arguments().real(38719.6458));
  expect(text(u"20060102"), kDateToStr, Arguments().date(38719.6458));
  expect(text(u"20060102"), kDateToStr, Arguments().int32(38719));
}

TEST_F(Dispatch, RefusesWhatDoesNotConvert) {
  expect_refused(DISP_E_TYPEMISMATCH, kGetByte, Arguments().text(u"a").text(u"not a number"), 0);
  expect_refused(DISP_E_TYPEMISMATCH, kGetByte, Arguments().text(u"a").int32(32768), 0);
  expect_refused(DISP_E_TYPEMISMATCH, kGetByte, Arguments().text(u"a").int32(-32769), 0);
  VARIANT null;
  VariantInit(&null);
  V_VT(&null) = VT_NULL;
  expect_refused(DISP_E_TYPEMISMATCH, kGetByte, Arguments().borrowed(null).int16(0), 1);
  VARIANT nothing;
  VariantInit(&nothing);
  V_VT(&nothing) = VT_DISPATCH;
  V_DISPATCH(&nothing) = nullptr;
  expect_refused(DISP_E_TYPEMISMATCH, kGetByte, Arguments().borrowed(nothing).int16(0), 1);
}

TEST_F(Dispatch, CountsArguments) {
  expect_refused(DISP_E_BADPARAMCOUNT, kGetByte, Arguments().text(u"a"));
  expect_refused(DISP_E_BADPARAMCOUNT, kGetByte, Arguments());
  expect_refused(DISP_E_BADPARAMCOUNT, kGetByte, Arguments().text(u"a").int16(0).int16(0));
  expect_refused(DISP_E_BADPARAMCOUNT, kSetString1, Arguments().text(u"a").int32(1).int16(0).int16(0));
}

TEST_F(Dispatch, SuppliesDefaults) {
  expect(text(u"ab   "), kSetString1, Arguments().text(u"ab").int32(5));
  expect(text(u"ab   "), kSetString1, Arguments().text(u"ab").int32(5).missing());
  expect(text(u"   ab"), kSetString1, Arguments().text(u"ab").int32(5).int16(1));
  expect(text(u"2006年01月02日"), kDateFormat, Arguments().text(u"20060102"));
  expect(text(u"2006年01月02日"), kDateFormat, Arguments().text(u"20060102").missing());
  expect(text(u"2006-01-02"), kDateFormat, Arguments().text(u"20060102").text(u"--"));
}

TEST_F(Dispatch, ADefaultCanStandBeforeAGivenArgument) {
  Outcome february = invoke(validate_.Get(), kGetDays, Arguments().missing().int16(2));
  ASSERT_EQ(february.result, S_OK);
  EXPECT_TRUE(V_I2(&february.value.get()) == 28 || V_I2(&february.value.get()) == 29);
}

TEST_F(Dispatch, RequiredArgumentsCannotBeMissing) {
  expect_refused(DISP_E_PARAMNOTOPTIONAL, kGetByte, Arguments().text(u"a").missing(), 0);
  expect_refused(DISP_E_PARAMNOTOPTIONAL, kGetByte, Arguments().missing().int16(0), 1);
}

TEST_F(Dispatch, TakesNamedArguments) {
  expect(text(u"   ab"), kSetString1, Arguments().text(u"ab").int16(1).at(2).int32(5).at(1));
  expect(text(u"ab   "), kSetString1, Arguments().int32(5).at(1).text(u"ab").at(0));
  expect(int16(29), kGetDays, Arguments().int16(2).at(1).int16(2000).at(0));
}

TEST_F(Dispatch, RefusesNamedArgumentsThatFitNowhere) {
  expect_refused(DISP_E_PARAMNOTFOUND, kGetByte, Arguments().text(u"a").int16(0).at(7), 0);
  expect_refused(DISP_E_PARAMNOTFOUND, kGetByte, Arguments().text(u"a").int16(0).at(-3), 0);
  // Place 0 is taken twice.
  expect_refused(DISP_E_PARAMNOTFOUND, kGetByte, Arguments().text(u"a").int16(0).at(0), 1);
  expect_refused(DISP_E_PARAMNOTFOUND, kGetByte, Arguments().text(u"a").at(DISPID_PROPERTYPUT).int16(0), 0);
  expect_refused(DISP_E_PARAMNOTOPTIONAL, kSetString1, Arguments().text(u"a").int16(0).at(2));
}

TEST_F(Dispatch, ReadsByReferenceVariants) {
  const ScopedBstr content(u"中a");
  BSTR text_variable = content.get();
  SHORT int16_variable = 0;
  expect(int16(3), kGetByte,
         Arguments().borrowed(reference_to(&text_variable)).borrowed(reference_to(&int16_variable)));
  ScopedVariant variable;
  V_VT(&variable.get()) = VT_I4;
  V_I4(&variable.get()) = 12345;
  expect(int16(5), kGetByte, Arguments().borrowed(reference_to(variable.receive())).int16(0));
  EXPECT_EQ(V_VT(&variable.get()), VT_I4) << "the caller's variable stays as it is";
  EXPECT_EQ(V_I4(&variable.get()), 12345);
}

TEST_F(Dispatch, AByReferenceParameterTakesEveryKindOfArgument) {
  const ScopedBstr dashes(u"--");
  BSTR variable = dashes.get();
  expect(text(u"2006-01-02"), kDateFormat, Arguments().text(u"20060102").borrowed(reference_to(&variable)));
  EXPECT_EQ(variable, dashes.get());
  ScopedVariant held;
  V_VT(&held.get()) = VT_BSTR;
  V_BSTR(&held.get()) = SysAllocString(L"//");
  expect(text(u"2006/01/02"), kDateFormat, Arguments().text(u"20060102").borrowed(reference_to(held.receive())));
  EXPECT_EQ(text_of(V_BSTR(&held.get())), u"//");
  expect(text(u"2006101202"), kDateFormat, Arguments().text(u"20060102").int16(12));
  BSTR null_text = nullptr;
  expect(text(u"20060102"), kDateFormat, Arguments().text(u"20060102").borrowed(reference_to(&null_text)));
  ScopedVariant missing;
  V_VT(&missing.get()) = VT_ERROR;
  V_ERROR(&missing.get()) = DISP_E_PARAMNOTFOUND;
  expect(text(u"2006年01月02日"), kDateFormat, Arguments().text(u"20060102").borrowed(reference_to(missing.receive())));
}

TEST_F(Dispatch, RefusesUnknownOperations) {
  constexpr DISPID kUnknown[] = {DISPID_VALUE, DISPID_UNKNOWN, DISPID_NEWENUM, 0x60030022, 0x6003004C};
  for (const DISPID dispid : kUnknown) {
    expect_refused(DISP_E_MEMBERNOTFOUND, dispid, Arguments());
  }
}

// Operations are found by the low bits of their DISPIDs.
TEST_F(Dispatch, RefusesDispidsThatEndLikeAnOperations) {
  for (const DISPID dispid : {kGetByte + 64, kGetByte - 64, kGetByte & 0xFF, kGetByte | 0x08000000}) {
    expect_refused(DISP_E_MEMBERNOTFOUND, dispid, Arguments().text(u"a").int16(0));
  }
}

TEST_F(Dispatch, RefusesBadCalls) {
  ScopedVariant result;
  DISPPARAMS none = {};
  EXPECT_EQ(validate_->Invoke(kGetByte, IID_IUnknown, 0, DISPATCH_METHOD, &none, result.receive(), nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(validate_->Invoke(kGetByte, IID_NULL, 0, DISPATCH_METHOD, nullptr, result.receive(), nullptr, nullptr),
            E_INVALIDARG);
  DISPPARAMS no_list = {nullptr, nullptr, 2, 0};
  EXPECT_EQ(validate_->Invoke(kGetByte, IID_NULL, 0, DISPATCH_METHOD, &no_list, result.receive(), nullptr, nullptr),
            E_INVALIDARG);
  DISPID place = 0;
  DISPPARAMS more_names = {nullptr, &place, 0, 1};
  EXPECT_EQ(validate_->Invoke(kGetByte, IID_NULL, 0, DISPATCH_METHOD, &more_names, result.receive(), nullptr, nullptr),
            E_INVALIDARG);
}

TEST_F(Dispatch, DoesWithoutOutPointers) {
  Arguments arguments;
  arguments.text(u"a,b").int16(9).text(u",");
  DISPPARAMS parameters = arguments.parameters();
  EXPECT_EQ(validate_->Invoke(kGetStrPf, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
  Arguments good;
  good.text(u"a,b").int16(1).text(u",");
  parameters = good.parameters();
  EXPECT_EQ(validate_->Invoke(kGetStrPf, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), S_OK);
  Arguments mismatch;
  mismatch.text(u"a,b").text(u"x").text(u",");
  parameters = mismatch.parameters();
  EXPECT_EQ(validate_->Invoke(kGetStrPf, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            DISP_E_TYPEMISMATCH);
}

TEST_F(Dispatch, ConvertsByTheCallersLocale) {
  const LCID german = MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), SORT_DEFAULT);
  Arguments arguments;
  arguments.real(1.5).int32(3).int16(0);
  DISPPARAMS parameters = arguments.parameters();
  ScopedVariant result;
  EXPECT_EQ(validate_->Invoke(kSetString1, IID_NULL, german, DISPATCH_METHOD, &parameters, result.receive(), nullptr,
                              nullptr),
            S_OK);
  EXPECT_EQ(text_of(V_BSTR(&result.get())), u"1,5");
}

}  // namespace
}  // namespace corvelle::testing
