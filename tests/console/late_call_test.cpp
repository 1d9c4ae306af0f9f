// What a late-bound call of the tool makes of an object's answers, by an object that answers what no operation does.

#include "console/late_call.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvelle::console {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Has one member, Take, whose answer is set by the test. It assigns to its last argument, which stands first.
class Host : public IDispatch {
 public:
  virtual ~Host() = default;

  HRESULT answer = S_OK;
  EXCEPINFO exception = {};
  bool assigns = false;
  UINT wrong_argument = 1;

  STDMETHODIMP QueryInterface(REFIID /*interface_id*/, void** result) override {
    *result = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*result*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID /*interface_id*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                             DISPID* ids) override {
    ids[0] = 1;
    return std::wstring_view(names[0]) == L"Take" ? S_OK : DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID /*id*/, REFIID /*interface_id*/, LCID /*locale*/, WORD /*flags*/, DISPPARAMS* parameters,
                      VARIANT* /*result*/, EXCEPINFO* exception_of_caller, UINT* wrong_argument_of_caller) override {
    if (assigns) {
      VARIANT* variable = V_VARIANTREF(&parameters->rgvarg[0]);
      VariantClear(variable);
      V_VT(variable) = VT_I2;
      V_I2(variable) = 7;
    }
    *exception_of_caller = exception;
    *wrong_argument_of_caller = wrong_argument;
    return answer;
  }
};

HRESULT STDAPICALLTYPE fill_in(EXCEPINFO* exception) {
  exception->wCode = 1004;
  exception->bstrSource = SysAllocString(L"Host");
  exception->bstrDescription = SysAllocString(L"坏了");
  return S_OK;
}

class LateCall : public ::testing::Test {
 protected:
  Answer called(const std::wstring& name = L"Take") {
    arguments_.push_back(text_variable(L"first"));
    arguments_.push_back(text_variable(L"second"));
    return call(&host_, name, arguments_);
  }

  Host host_;
  std::vector<ScopedVariant> arguments_;
};

TEST_F(LateCall, NamesTheArgumentsThatTheOperationChanged) {
  host_.assigns = true;
  const Answer answer = called();
  EXPECT_EQ(answer.ending, Ending::value);
  EXPECT_THAT(answer.changed, ElementsAre(1u));
  EXPECT_EQ(shown(arguments_[0].get()), L"first");
  EXPECT_EQ(shown(arguments_[1].get()), L"7");
}

TEST_F(LateCall, NamesNoneThatStayedAsTheyWere) { EXPECT_THAT(called().changed, IsEmpty()); }

TEST_F(LateCall, TakesAnErrorsTextsAlsoWhereTheyComeLate) {
  host_.answer = DISP_E_EXCEPTION;
  host_.exception.pfnDeferredFillIn = &fill_in;
  const Answer answer = called();
  EXPECT_EQ(answer.ending, Ending::error);
  EXPECT_EQ(number_of(answer.result), 1004);
  EXPECT_EQ(answer.source, L"Host");
  EXPECT_EQ(answer.description, L"坏了");
}

// Types that no variant has, and arrays and values elsewhere, which may be nowhere.
TEST(Shown, IsNothingOfWhatIsNoValue) {
  VARIANT value = {};
  for (int type = VT_CLSID + 1; type <= 0xFFFF; ++type) {
    V_VT(&value) = static_cast<VARTYPE>(type);
    V_BYREF(&value) = reinterpret_cast<void*>(8);
    EXPECT_EQ(shown(value), L"") << type;
  }
}

TEST_F(LateCall, IsRefusedWhereItDoesNotFit) {
  host_.answer = DISP_E_TYPEMISMATCH;
  const Answer mismatch = called();
  EXPECT_EQ(mismatch.ending, Ending::refused);
  EXPECT_EQ(mismatch.wrong_argument, 0u) << "objects count from the end";
  host_.wrong_argument = 4;
  EXPECT_EQ(called().wrong_argument, std::nullopt) << "there is no such argument";
  const Answer unknown = called(L"Give");
  EXPECT_EQ(unknown.ending, Ending::refused);
  EXPECT_EQ(number_of(unknown.result), 438);
}

}  // namespace
}  // namespace corvelle::console
