// The embedded type library, as hosts and object browsers read it.
#include <gtest/gtest.h>
#include <ocidl.h>

#include <optional>

#include "component/class_description.h"
#include "tests/component/host.h"
#include "tests/support/data_access_library.h"

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

// Looks at a type as those do who list an object's members or make code from it: they look at everything, and give up
// where anything fails.
class Reader {
 public:
  void read(ITypeInfo* type) {
    SCOPED_TRACE(utf8(name_of(type)));
    read_library(type);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
    for (UINT i = 0; i < attributes->cFuncs; ++i) read_function(type, i);
    for (UINT i = 0; i < attributes->cImplTypes; ++i) read_implemented(type, i, attributes->typekind == TKIND_COCLASS);
    if ((attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0) read_other_side(type);
    type->ReleaseTypeAttr(attributes);
  }

  int operations() const { return operations_; }
  int foreign() const { return foreign_; }  // references to the data access library
  const std::vector<GUID>& libraries() const { return libraries_; }

 private:
  void read_library(ITypeInfo* type) {
    ComPtr<ITypeLib> library;
    UINT index = 0;
    TLIBATTR* attributes = nullptr;
    ScopedBstr name;
    ASSERT_EQ(type->GetContainingTypeLib(&library, &index), S_OK);
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    libraries_.push_back(attributes->guid);
    library->ReleaseTLibAttr(attributes);
    EXPECT_EQ(library->GetDocumentation(-1, name.receive(), nullptr, nullptr, nullptr), S_OK);
  }

  void read_function(ITypeInfo* type, UINT index) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(type->GetFuncDesc(index, &function), S_OK);
    BSTR names[kMaxParameters + 2] = {};
    UINT count = 0;
    ScopedBstr help;
    EXPECT_EQ(type->GetNames(function->memid, names, kMaxParameters + 2, &count), S_OK);
    EXPECT_EQ(type->GetDocumentation(function->memid, nullptr, help.receive(), nullptr, nullptr), S_OK);
    SCOPED_TRACE(utf8(text_of(names[0])));
    for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
    for (SHORT i = 0; i < function->cParams; ++i) read_type(type, function->lprgelemdescParam[i].tdesc);
    read_type(type, function->elemdescFunc.tdesc);
    if (function->memid >= kFirstOperation) ++operations_;
    type->ReleaseFuncDesc(function);
  }

  void read_type(ITypeInfo* type, const TYPEDESC& description) {
    if (description.vt == VT_PTR) read_type(type, *description.lptdesc);
    if (description.vt != VT_USERDEFINED) return;
    ComPtr<ITypeInfo> referred;
    ASSERT_EQ(type->GetRefTypeInfo(description.hreftype, &referred), S_OK);
    read_library(referred.Get());
    if (libraries_.back() == kDataAccessLibraryId) ++foreign_;
  }

  void read_implemented(ITypeInfo* type, UINT index, bool own) {
    HREFTYPE reference = 0;
    INT flags = 0;
    ComPtr<ITypeInfo> implemented;
    ASSERT_EQ(type->GetRefTypeOfImplType(index, &reference), S_OK);
    ASSERT_EQ(type->GetImplTypeFlags(index, &flags), S_OK);
    ASSERT_EQ(type->GetRefTypeInfo(reference, &implemented), S_OK);
    if (own) read(implemented.Get());
  }

  // The vtable's side of a dispatch interface, which has the same functions.
  void read_other_side(ITypeInfo* type) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> side;
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    ASSERT_EQ(type->GetRefTypeInfo(reference, &side), S_OK);
    ASSERT_EQ(side->GetTypeAttr(&attributes), S_OK);
    for (UINT i = 0; i < attributes->cFuncs; ++i) read_function(side.Get(), i);
    side->ReleaseTypeAttr(attributes);
  }

  static constexpr MEMBERID kFirstOperation = 0x60030000;
  int operations_ = 0;
  int foreign_ = 0;
  std::vector<GUID> libraries_;
};

class WholeTypeInformation : public ::testing::TestWithParam<std::tuple<Described, bool>> {
 protected:
  void SetUp() override {
    ComPtr<ITypeLib> library;
    if (std::get<1>(GetParam())) data_access_.emplace(CORVELLE_DATA_ACCESS_STUB);
    ASSERT_EQ(SUCCEEDED(LoadRegTypeLib(kDataAccessLibraryId, kDataAccessMajor, kDataAccessMinor, 0, &library)),
              std::get<1>(GetParam()));
  }

  // The type information's members: each operation once a side, nothing missing, and nothing that leads nowhere.
  void check(ITypeInfo* type) {
    Reader reader;
    reader.read(type);
    const auto& operations = description_.operations;
    EXPECT_EQ(reader.operations(), 2 * static_cast<int>(operations.size()));
    const auto with_database = std::ranges::count_if(operations, [](const Operation& operation) {
      return std::ranges::any_of(operation.parameters(),
                                 [](const Parameter& parameter) { return parameter.type == kDatabaseType; });
    });
    EXPECT_EQ(reader.foreign(), std::get<1>(GetParam()) ? 2 * with_database : 0);
    EXPECT_EQ(reader.libraries().front(), kLibraryId);
  }

  Apartment apartment_;
  std::optional<DataAccessLibrary> data_access_;
  const ClassDescription& description_ = *std::get<0>(GetParam()).description;
  ComPtr<IDispatch> object_ = create(std::get<0>(GetParam()).prog_id);
};

TEST_P(WholeTypeInformation, OfTheInterfaceCanBeRead) {
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(object_->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type), S_OK);
  check(type.Get());
}

TEST_P(WholeTypeInformation, OfTheClassCanBeRead) {
  ComPtr<IProvideClassInfo> provider;
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(object_.As(&provider), S_OK);
  ASSERT_EQ(provider->GetClassInfo(&type), S_OK);
  check(type.Get());
}

INSTANTIATE_TEST_SUITE_P(Classes, WholeTypeInformation,
                         ::testing::Combine(::testing::Values(Described{L"Corvelle.ClsValidate", &kClsValidateClass},
                                                              Described{L"Corvelle.ClsVexApp", &kClsVexAppClass}),
                                            ::testing::Bool()),
                         [](const auto& info) {
                           return utf8(as_text(std::get<0>(info.param).description->name)) +
                                  (std::get<1>(info.param) ? "WithDataAccess" : "WithoutDataAccess");
                         });

}  // namespace
}  // namespace corvelle::testing
