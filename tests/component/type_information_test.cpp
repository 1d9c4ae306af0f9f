// The embedded type library, as hosts and object browsers read it.
#include <gtest/gtest.h>
#include <ocidl.h>

#include "component/class_description.h"
#include "tests/component/host.h"

namespace corvelle::testing {
namespace {

struct Described {
  const wchar_t* prog_id;
  const ClassDescription* description;
};

class TypeInformation : public ::testing::TestWithParam<Described> {
 protected:
  ComPtr<ITypeInfo> interface_type() {
    ComPtr<ITypeInfo> type;
    EXPECT_EQ(object_->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type), S_OK);
    return type;
  }

  Apartment apartment_;
  ComPtr<IDispatch> object_ = create(GetParam().prog_id);
  const ClassDescription& description_ = *GetParam().description;
};

std::u16string name_of(ITypeInfo* type, MEMBERID member = MEMBERID_NIL) {
  ScopedBstr name;
  EXPECT_EQ(type->GetDocumentation(member, name.receive(), nullptr, nullptr, nullptr), S_OK);
  return std::u16string(name.view());
}

std::u16string help_of(ITypeInfo* type, MEMBERID member) {
  ScopedBstr help;
  EXPECT_EQ(type->GetDocumentation(member, nullptr, help.receive(), nullptr, nullptr), S_OK);
  return std::u16string(help.view());
}

TEST_P(TypeInformation, IsTheClasssOwnInterface) {
  UINT count = 0;
  EXPECT_EQ(object_->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  const auto type = interface_type();
  ASSERT_NE(type, nullptr);
  EXPECT_EQ(name_of(type.Get()), as_text(description_.interface_name));
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, description_.interface_id);
  const UINT wanted = TYPEFLAG_FDUAL | TYPEFLAG_FHIDDEN | TYPEFLAG_FNONEXTENSIBLE;
  EXPECT_EQ(attributes->wTypeFlags & wanted, wanted);
  type->ReleaseTypeAttr(attributes);
}

TEST_P(TypeInformation, IsAutomationCompatibleThroughTheVtable) {
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> vtable_side;
  ASSERT_EQ(interface_type()->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
  ASSERT_EQ(interface_type()->GetRefTypeInfo(reference, &vtable_side), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(vtable_side->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
  const UINT wanted = TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION;
  EXPECT_EQ(attributes->wTypeFlags & wanted, wanted);
  vtable_side->ReleaseTypeAttr(attributes);
}

TEST_P(TypeInformation, NamesTheClass) {
  ComPtr<IProvideClassInfo> provider;
  ASSERT_EQ(object_->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(provider.GetAddressOf())), S_OK);
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(provider->GetClassInfo(&type), S_OK);
  EXPECT_EQ(name_of(type.Get()), as_text(description_.name));
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, description_.class_id);
  EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
  EXPECT_EQ(attributes->cImplTypes, 1) << "the default interface and no other, no events";
  EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE, 0);
  type->ReleaseTypeAttr(attributes);
  EXPECT_EQ(provider->GetClassInfo(nullptr), E_POINTER);
}

TEST_P(TypeInformation, DescribesEveryOperation) {
  const auto type = interface_type();
  for (const Operation& operation : description_.operations) {
    SCOPED_TRACE(utf8(operation.name));
    EXPECT_EQ(name_of(type.Get(), operation.dispid), operation.name);
    EXPECT_EQ(help_of(type.Get(), operation.dispid), std::u16string(operation.help.begin(), operation.help.end()));
    BSTR names[kMaxParameters + 2] = {};
    UINT count = 0;
    ASSERT_EQ(type->GetNames(operation.dispid, names, kMaxParameters + 2, &count), S_OK);
    EXPECT_GE(count, operation.parameter_count + 1u);
    for (std::size_t i = 0; i < operation.parameter_count; ++i) {
      EXPECT_EQ(text_of(names[i + 1]), operation.parameters()[i].name);
    }
    for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
  }
}

TEST_P(TypeInformation, HasOneIndexOnly) {
  ComPtr<ITypeInfo> type;
  EXPECT_EQ(object_->GetTypeInfo(1, LOCALE_USER_DEFAULT, &type), DISP_E_BADINDEX);
  EXPECT_EQ(object_->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
  EXPECT_EQ(object_->GetTypeInfoCount(nullptr), E_POINTER);
}

INSTANTIATE_TEST_SUITE_P(Classes, TypeInformation,
                         ::testing::Values(Described{L"Corvelle.ClsValidate", &kClsValidateClass},
                                           Described{L"Corvelle.ClsVexApp", &kClsVexAppClass}),
                         [](const auto& info) { return std::string(info.index == 0 ? "ClsValidate" : "ClsVexApp"); });

}  // namespace
}  // namespace corvelle::testing
