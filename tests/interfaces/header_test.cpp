// The shipped header says what the DLL's type library says: identifiers, and for each member its place in the vtable,
// its DISPID and its parameters.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "Corvelle.h"
#include "component/operation.h"
#include "tests/support/data_access_library.h"

namespace corvelle::testing {
namespace {

using Microsoft::WRL::ComPtr;

struct Member {
  std::wstring name;
  MEMBERID dispid = 0;
  std::size_t slot = 0;
  std::vector<VARTYPE> parameters;

  friend bool operator==(const Member&, const Member&) = default;
};

std::ostream& operator<<(std::ostream& out, const Member& member) {
  out << std::string(member.name.begin(), member.name.end()) << " " << std::hex << member.dispid << std::dec << " slot "
      << member.slot;
  for (const VARTYPE type : member.parameters) out << " " << type;
  return out;
}

// The place of a virtual member function in the vtable, as this compiler keeps it: the offset, and 1 for "virtual".
template <auto Method>
std::size_t slot_of() {
  using Parts = std::array<std::uintptr_t, 2>;
  const std::uintptr_t offset = std::bit_cast<Parts>(Method)[0];
  EXPECT_EQ(offset % 2, 1u) << "no virtual function";
  return (offset - 1) / sizeof(void*);
}

// A member as the header has it.
template <auto Method>
Member member(const wchar_t* name, DISPID dispid) {
  using Signature = internal::Signature<decltype(Method)>;
  Member result{name, dispid, slot_of<Method>(), {}};
  for (std::size_t i = 0; i < Signature::kCount; ++i) result.parameters.push_back(Signature::type_at(i));
  return result;
}

std::vector<Member> members_of_validate() {
  return {
      member<&_ClsValidate::sumByte_Pf>(L"sumByte_Pf", DISPID_ClsValidate_sumByte_Pf),
      member<&_ClsValidate::GetByte_Pf>(L"GetByte_Pf", DISPID_ClsValidate_GetByte_Pf),
      member<&_ClsValidate::getStr_Pf>(L"getStr_Pf", DISPID_ClsValidate_getStr_Pf),
      member<&_ClsValidate::getStrDo_Pf>(L"getStrDo_Pf", DISPID_ClsValidate_getStrDo_Pf),
      member<&_ClsValidate::Center>(L"Center", DISPID_ClsValidate_Center),
      member<&_ClsValidate::GetStr>(L"GetStr", DISPID_ClsValidate_GetStr),
      member<&_ClsValidate::is_AlphaNum>(L"is_AlphaNum", DISPID_ClsValidate_is_AlphaNum),
      member<&_ClsValidate::getNum>(L"getNum", DISPID_ClsValidate_getNum),
      member<&_ClsValidate::Is_HuanZi>(L"Is_HuanZi", DISPID_ClsValidate_Is_HuanZi),
      member<&_ClsValidate::GetPath>(L"GetPath", DISPID_ClsValidate_GetPath),
      member<&_ClsValidate::Get_Str>(L"Get_Str", DISPID_ClsValidate_Get_Str),
      member<&_ClsValidate::CharChange>(L"CharChange", DISPID_ClsValidate_CharChange),
      member<&_ClsValidate::getString_P>(L"getString_P", DISPID_ClsValidate_getString_P),
      member<&_ClsValidate::Get_String>(L"Get_String", DISPID_ClsValidate_Get_String),
      member<&_ClsValidate::Set_String1>(L"Set_String1", DISPID_ClsValidate_Set_String1),
      member<&_ClsValidate::File_Find>(L"File_Find", DISPID_ClsValidate_File_Find),
      member<&_ClsValidate::IFTable>(L"IFTable", DISPID_ClsValidate_IFTable),
      member<&_ClsValidate::IFField>(L"IFField", DISPID_ClsValidate_IFField),
      member<&_ClsValidate::dateToStr_Pf>(L"dateToStr_Pf", DISPID_ClsValidate_dateToStr_Pf),
      member<&_ClsValidate::strDateFmt_Pf>(L"strDateFmt_Pf", DISPID_ClsValidate_strDateFmt_Pf),
      member<&_ClsValidate::CreateIndex2>(L"CreateIndex2", DISPID_ClsValidate_CreateIndex2),
      member<&_ClsValidate::CreateIndex>(L"CreateIndex", DISPID_ClsValidate_CreateIndex),
      member<&_ClsValidate::getDays_Pf>(L"getDays_Pf", DISPID_ClsValidate_getDays_Pf),
      member<&_ClsValidate::GetDecimalFmt>(L"GetDecimalFmt", DISPID_ClsValidate_GetDecimalFmt),
      member<&_ClsValidate::GetDecimalFmt_4>(L"GetDecimalFmt_4", DISPID_ClsValidate_GetDecimalFmt_4),
      member<&_ClsValidate::GetDecimalFmt_8>(L"GetDecimalFmt_8", DISPID_ClsValidate_GetDecimalFmt_8),
      member<&_ClsValidate::GetDecimalFmt_Bus>(L"GetDecimalFmt_Bus", DISPID_ClsValidate_GetDecimalFmt_Bus),
      member<&_ClsValidate::SetGrdCenter>(L"SetGrdCenter", DISPID_ClsValidate_SetGrdCenter),
      member<&_ClsValidate::SetGrdAlign>(L"SetGrdAlign", DISPID_ClsValidate_SetGrdAlign),
      member<&_ClsValidate::ClearGrd>(L"ClearGrd", DISPID_ClsValidate_ClearGrd),
      member<&_ClsValidate::Get_String_PY>(L"Get_String_PY", DISPID_ClsValidate_Get_String_PY),
      member<&_ClsValidate::Get_StrWidth>(L"Get_StrWidth", DISPID_ClsValidate_Get_StrWidth),
      member<&_ClsValidate::GetComputerNm>(L"GetComputerNm", DISPID_ClsValidate_GetComputerNm),
  };
}

std::vector<Member> members_of_vex_app() {
  return {
      member<&_ClsVexApp::GetComputerNm>(L"GetComputerNm", DISPID_ClsVexApp_GetComputerNm),
      member<&_ClsVexApp::Replace_Str>(L"Replace_Str", DISPID_ClsVexApp_Replace_Str),
      member<&_ClsVexApp::ConversionStr_Long>(L"ConversionStr_Long", DISPID_ClsVexApp_ConversionStr_Long),
      member<&_ClsVexApp::ConversionStr_Short>(L"ConversionStr_Short", DISPID_ClsVexApp_ConversionStr_Short),
      member<&_ClsVexApp::Set_Str>(L"Set_Str", DISPID_ClsVexApp_Set_Str),
      member<&_ClsVexApp::Get_Str>(L"Get_Str", DISPID_ClsVexApp_Get_Str),
  };
}

// The type that a C++ parameter of that description has, as component/operation.h sees it.
VARTYPE seen_from_cpp(const TYPEDESC& type) {
  if (type.vt == VT_PTR && type.lptdesc->vt == VT_USERDEFINED) return kDatabaseType;
  if (type.vt == VT_PTR) return static_cast<VARTYPE>(seen_from_cpp(*type.lptdesc) | VT_BYREF);
  if (type.vt == VT_BOOL) return VT_I2;
  return type.vt == VT_DATE ? VARTYPE{VT_R8} : type.vt;
}

class ShippedHeader : public ::testing::Test {
 protected:
  void SetUp() override {
    CoInitialize(nullptr);
    ASSERT_EQ(LoadTypeLibEx(CORVELLE_FOLDER L"/Corvelle.dll", REGKIND_NONE, &library_), S_OK);
  }
  void TearDown() override {
    library_.Reset();
    CoUninitialize();
  }

  // The vtable's side of a dual interface.
  ComPtr<ITypeInfo> vtable_side(REFIID interface_id) {
    ComPtr<ITypeInfo> type;
    ComPtr<ITypeInfo> side;
    HREFTYPE reference = 0;
    EXPECT_EQ(library_->GetTypeInfoOfGuid(interface_id, &type), S_OK);
    EXPECT_EQ(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    EXPECT_EQ(type->GetRefTypeInfo(reference, &side), S_OK);
    return side;
  }

  std::vector<Member> members_of(REFIID interface_id) {
    const ComPtr<ITypeInfo> type = vtable_side(interface_id);
    std::vector<Member> members;
    FUNCDESC* function = nullptr;
    for (UINT index = 0; SUCCEEDED(type->GetFuncDesc(index, &function)); ++index) {
      BSTR name = nullptr;
      EXPECT_EQ(type->GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr), S_OK);
      Member member{name, function->memid, static_cast<std::size_t>(function->oVft) / sizeof(void*), {}};
      SysFreeString(name);
      for (SHORT i = 0; i < function->cParams; ++i) {
        member.parameters.push_back(seen_from_cpp(function->lprgelemdescParam[i].tdesc));
      }
      members.push_back(member);
      type->ReleaseFuncDesc(function);
    }
    return members;
  }

  GUID class_id(const wchar_t* name) {
    ComPtr<ITypeInfo> type;
    TYPEATTR* attributes = nullptr;
    MEMBERID member = 0;
    USHORT found = 1;
    EXPECT_EQ(library_->FindName(const_cast<wchar_t*>(name), 0, &type, &member, &found), S_OK);
    EXPECT_EQ(type->GetTypeAttr(&attributes), S_OK);
    const GUID id = attributes->guid;
    type->ReleaseTypeAttr(attributes);
    return id;
  }

  const DataAccessLibrary data_access_{CORVELLE_FOLDER L"/data_access_stub.tlb"};
  ComPtr<ITypeLib> library_;
};

TEST_F(ShippedHeader, NamesTheLibraryAndTheClasses) {
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library_->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, LIBID_Corvelle);
  library_->ReleaseTLibAttr(attributes);
  EXPECT_EQ(class_id(L"ClsValidate"), CLSID_ClsValidate);
  EXPECT_EQ(class_id(L"ClsVexApp"), CLSID_ClsVexApp);
  EXPECT_EQ(__uuidof(_ClsValidate), IID__ClsValidate);
  EXPECT_EQ(__uuidof(_ClsVexApp), IID__ClsVexApp);
}

TEST_F(ShippedHeader, HasTheMembersOfTheTypeLibrary) {
  EXPECT_EQ(members_of_validate(), members_of(IID__ClsValidate));
  EXPECT_EQ(members_of_vex_app(), members_of(IID__ClsVexApp));
}

}  // namespace
}  // namespace corvelle::testing
