// Errors on their way to the host, through both bindings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/error_report.h"
#include "tests/component/host.h"

namespace corvelle::testing {
namespace {

const std::u16string kTooLong(32767, u'a');

class Errors : public ::testing::Test {
 protected:
  Apartment apartment_;
  ComPtr<_ClsValidate> validate_ = create_validate();
};

TEST_F(Errors, EarlyBoundCallsEndInTheNumbersHresult) {
  SHORT width = 7;
  EXPECT_EQ(validate_->GetByte_Pf(ScopedBstr(kTooLong).get(), 0, &width), static_cast<HRESULT>(0x800A0006));
  EXPECT_EQ(width, 0) << "no result after a failure";
  BSTR field = reinterpret_cast<BSTR>(&width);
  EXPECT_EQ(validate_->getStr_Pf(ScopedBstr(u"a,b").get(), 2, ScopedBstr(u",").get(), &field),
            static_cast<HRESULT>(0x800A0005));
  EXPECT_EQ(field, nullptr);
}

TEST_F(Errors, EarlyBoundCallsLeaveErrorInformation) {
  SHORT width = 0;
  validate_->GetByte_Pf(ScopedBstr(kTooLong).get(), 0, &width);
  ComPtr<IErrorInfo> information;
  ASSERT_EQ(GetErrorInfo(0, &information), S_OK);
  ScopedBstr source;
  ScopedBstr description;
  GUID interface_id = {};
  EXPECT_EQ(information->GetSource(source.receive()), S_OK);
  EXPECT_EQ(information->GetDescription(description.receive()), S_OK);
  EXPECT_EQ(information->GetGUID(&interface_id), S_OK);
  EXPECT_EQ(source.view(), u"Corvelle.ClsValidate");
  EXPECT_THAT(utf8(description.view()), ::testing::AllOf(::testing::HasSubstr("GetByte_Pf"),
                                                         ::testing::HasSubstr("vStr"), ::testing::HasSubstr("32767")));
  EXPECT_EQ(interface_id, kClsValidateInterfaceId);
}

TEST_F(Errors, ASuccessClearsErrorInformation) {
  SHORT width = 0;
  validate_->GetByte_Pf(ScopedBstr(kTooLong).get(), 0, &width);
  EXPECT_EQ(validate_->GetByte_Pf(ScopedBstr(u"a").get(), 0, &width), S_OK);
  EXPECT_EQ(error_description(), std::nullopt);
}

TEST_F(Errors, LateBoundCallsEndInAnException) {
  const Outcome outcome = invoke(validate_.Get(), L"GetByte_Pf", Arguments().text(kTooLong).int16(0));
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.scode, static_cast<HRESULT>(0x800A0006));
  EXPECT_EQ(outcome.source, u"Corvelle.ClsValidate");
  EXPECT_THAT(utf8(outcome.description), ::testing::HasSubstr("GetByte_Pf: vStr"));
  EXPECT_EQ(V_VT(&outcome.value.get()), VT_EMPTY);
  EXPECT_EQ(error_description(), std::nullopt) << "the exception took it";
}

TEST_F(Errors, TheSourceNamesTheClass) {
  const auto vex_app = create(L"Corvelle.ClsVexApp");
  const Outcome outcome = invoke(vex_app.Get(), L"ConversionStr_Short", Arguments().text(kTooLong));
  EXPECT_EQ(outcome.scode, static_cast<HRESULT>(0x800A0006));
  EXPECT_EQ(outcome.source, u"Corvelle.ClsVexApp");
}

TEST_F(Errors, ObjectsSupportErrorInformationForTheirInterface) {
  ComPtr<ISupportErrorInfo> support;
  ASSERT_EQ(validate_->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(support.GetAddressOf())), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(kClsValidateInterfaceId), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(kClsVexAppInterfaceId), S_FALSE);
}

TEST_F(Errors, ANullResultPointerIsRefused) {
  EXPECT_EQ(validate_->GetByte_Pf(nullptr, 0, nullptr), E_POINTER);
  EXPECT_EQ(validate_->Center(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(validate_->sumByte_Pf(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(create_vex_app()->Set_Str(nullptr, nullptr), E_POINTER);
}

// So near the bound of a BSTR the system itself may overlook that its size is none. Each character takes one column
// more than it takes units.
TEST_F(Errors, WantOfMemoryIsSaidOfTextsThatNoBstrHolds) {
  for (std::size_t characters = 0; characters < 32; ++characters) {
    ScopedBstr result;
    EXPECT_EQ(
        validate_->Set_String1(ScopedBstr(std::u16string(characters, u'中')).get(), 2147483647, 0, result.receive()),
        E_OUTOFMEMORY)
        << characters;
    EXPECT_EQ(result.get(), nullptr);
  }
}

TEST_F(Errors, ACalledOperationsErrorEndsTheCaller) {
  // GetPath takes each field by getStr_Pf, whose bound it meets first.
  const Outcome outcome = invoke(validate_.Get(), L"GetPath", Arguments().text(std::u16string(32767, u'\\')));
  EXPECT_EQ(outcome.scode, static_cast<HRESULT>(0x800A0006));
  EXPECT_FALSE(outcome.description.empty());
}

}  // namespace
}  // namespace corvelle::testing
