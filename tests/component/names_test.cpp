// Names to identifiers, late bound.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/operation_table.h"
#include "tests/component/host.h"

namespace corvelle::testing {
namespace {

class Names : public ::testing::Test {
 protected:
  HRESULT look_up(std::vector<const wchar_t*> names, std::vector<DISPID>& ids, REFIID interface_id = IID_NULL) {
    ids.assign(names.size(), 4711);
    return validate_->GetIDsOfNames(interface_id, const_cast<wchar_t**>(names.data()), static_cast<UINT>(names.size()),
                                    LOCALE_USER_DEFAULT, ids.data());
  }

  Apartment apartment_;
  ComPtr<IDispatch> validate_ = create(L"Corvelle.ClsValidate");
  ComPtr<IDispatch> vex_app_ = create(L"Corvelle.ClsVexApp");
};

TEST_F(Names, MatchInEitherCase) {
  EXPECT_EQ(dispid_of(validate_.Get(), L"getstr_pf"), 0x60030020);
  EXPECT_EQ(dispid_of(validate_.Get(), L"GETSTR_PF"), 0x60030020);
  EXPECT_EQ(dispid_of(vex_app_.Get(), L"GETCOMPUTERNM"), 0x6003000A);
}

TEST_F(Names, EveryOperationIsFoundByItsName) {
  for (const Operation& operation : kClsValidateOperations) {
    EXPECT_EQ(dispid_of(validate_.Get(), reinterpret_cast<const wchar_t*>(operation.name.data())), operation.dispid);
  }
  for (const Operation& operation : kClsVexAppOperations) {
    EXPECT_EQ(dispid_of(vex_app_.Get(), reinterpret_cast<const wchar_t*>(operation.name.data())), operation.dispid);
  }
}

TEST_F(Names, TheSameNameOnEachClassIsItsOwnOperation) {
  EXPECT_EQ(dispid_of(validate_.Get(), L"Get_Str"), 0x6003002A);
  EXPECT_EQ(dispid_of(vex_app_.Get(), L"Get_Str"), 0x60030013);
}

TEST_F(Names, ParametersAreTheirPositions) {
  std::vector<DISPID> ids;
  EXPECT_EQ(look_up({L"set_string1", L"FLAG", L"strname", L"lngLen"}, ids), S_OK);
  EXPECT_THAT(ids, ::testing::ElementsAre(0x60030030, 2, 0, 1));
}

TEST_F(Names, UnknownNamesAreSaidSo) {
  std::vector<DISPID> ids;
  EXPECT_EQ(look_up({L"GetStrPf"}, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[0], DISPID_UNKNOWN);
  EXPECT_EQ(look_up({L""}, ids), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(look_up({L"Center", L"Str", L"Width"}, ids), DISP_E_UNKNOWNNAME);
  EXPECT_THAT(ids, ::testing::ElementsAre(0x60030024, 0, DISPID_UNKNOWN));
  EXPECT_EQ(look_up({L"Nothing", L"Str"}, ids), DISP_E_UNKNOWNNAME);
  EXPECT_THAT(ids, ::testing::ElementsAre(DISPID_UNKNOWN, DISPID_UNKNOWN));
}

TEST_F(Names, OnlyAsciiLettersFold) {
  EXPECT_EQ(dispid_of(validate_.Get(), L"\u212Aenter"), DISPID_UNKNOWN);
  EXPECT_EQ(dispid_of(validate_.Get(), L"ｃenter"), DISPID_UNKNOWN);
  EXPECT_EQ(dispid_of(validate_.Get(), L"\u0131s_AlphaNum"), DISPID_UNKNOWN);
  EXPECT_EQ(dispid_of(validate_.Get(), L"set\x7Fstring1"), DISPID_UNKNOWN) << "'_' is no letter";
}

TEST_F(Names, BadCallsAreRefused) {
  std::vector<DISPID> ids;
  EXPECT_EQ(look_up({L"Center"}, ids, IID_IUnknown), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(validate_->GetIDsOfNames(IID_NULL, nullptr, 1, 0, ids.data()), E_INVALIDARG);
  EXPECT_EQ(look_up({nullptr}, ids), E_INVALIDARG);
}

}  // namespace
}  // namespace corvelle::testing
