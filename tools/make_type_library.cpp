// tools/make_type_library.cpp - writes Corvelle.tlb from the operation table, then reads it back and checks it.
//
//   make_type_library OUTPUT.tlb DATA_ACCESS_STUB.tlb
//
// Run by the build, in the bitness of the library, with ANSI code page 936: the system stores default texts in the
// code page of the process. The host's data access library need not be installed: a stub with its identity is written
// first, for the Database parameter's type to refer to.

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "component/automation.h"
#include "component/class_description.h"

namespace corvelle {
namespace {

using Microsoft::WRL::ComPtr;

#ifdef _WIN64
constexpr SYSKIND kSystemKind = SYS_WIN64;
#else
constexpr SYSKIND kSystemKind = SYS_WIN32;
#endif

// Members of IUnknown and IDispatch in front of every interface's own.
constexpr std::size_t kInheritedMembers = 7;

[[noreturn]] void fail(const char* step, HRESULT result) {
  std::fprintf(stderr, "make_type_library: %s failed: 0x%08lX\n", step, static_cast<unsigned long>(result));
  std::exit(1);
}

void check(HRESULT result, const char* step) {
  if (FAILED(result)) fail(step, result);
}

void require(bool holds, const char* what) {
  if (!holds) fail(what, TYPE_E_INVDATAREAD);
}

std::wstring wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }
std::wstring wide(std::u16string_view text) { return {text.begin(), text.end()}; }

ComPtr<ICreateTypeInfo> create_type(ICreateTypeLib* library, const wchar_t* name, TYPEKIND kind, REFGUID id,
                                    UINT flags) {
  ComPtr<ICreateTypeInfo> type;
  check(library->CreateTypeInfo(const_cast<wchar_t*>(name), kind, &type), "CreateTypeInfo");
  check(type->SetGuid(id), "SetGuid");
  check(type->SetTypeFlags(flags), "SetTypeFlags");
  check(type->SetVersion(kLibraryMajor, kLibraryMinor), "SetVersion of a type");
  return type;
}

ComPtr<ITypeInfo> dispatch_type() {
  ComPtr<ITypeLib> automation;
  ComPtr<ITypeInfo> dispatch;
  check(LoadTypeLib(L"stdole2.tlb", &automation), "loading stdole2.tlb");
  check(automation->GetTypeInfoOfGuid(IID_IDispatch, &dispatch), "finding IDispatch");
  return dispatch;
}

void derive_from_dispatch(ICreateTypeInfo* type) {
  HREFTYPE reference = 0;
  check(type->AddRefTypeInfo(dispatch_type().Get(), &reference), "AddRefTypeInfo of IDispatch");
  check(type->AddImplType(0, reference), "AddImplType of IDispatch");
}

constexpr UINT kInterfaceFlags =
    TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE;

// A library with the published identity of the data access library and nothing but its Database interface.
ComPtr<ITypeInfo> write_data_access_stub(const wchar_t* path) {
  ComPtr<ICreateTypeLib2> library;
  check(CreateTypeLib2(kSystemKind, path, &library), "CreateTypeLib2 of the stub");
  check(library->SetGuid(kDataAccessLibraryId), "SetGuid of the stub");
  check(library->SetVersion(kDataAccessMajor, kDataAccessMinor), "SetVersion of the stub");
  check(library->SetName(const_cast<wchar_t*>(L"DAO")), "SetName of the stub");
  check(library->SetLcid(LOCALE_NEUTRAL), "SetLcid of the stub");
  const auto database = create_type(library.Get(), L"Database", TKIND_INTERFACE, kDatabaseInterfaceId,
                                    TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE);
  derive_from_dispatch(database.Get());
  check(database->LayOut(), "LayOut of the stub");
  check(library->SaveAllChanges(), "saving the stub");
  ComPtr<ITypeLib> written;
  ComPtr<ITypeInfo> type;
  check(LoadTypeLibEx(path, REGKIND_NONE, &written), "reading the stub back");
  check(written->GetTypeInfoOfGuid(kDatabaseInterfaceId, &type), "finding Database in the stub");
  return type;
}

// What one FUNCDESC points to, kept together while it is added.
struct FunctionParts {
  std::vector<ELEMDESC> parameters;
  std::vector<TYPEDESC> pointed;
  std::vector<PARAMDESCEX> defaults;
  std::vector<ScopedBstr> default_texts;
  std::vector<std::wstring> names;

  explicit FunctionParts(std::size_t count)
      : parameters(count), pointed(count), defaults(count), default_texts(count) {}
};

TYPEDESC type_desc(const Parameter& parameter, HREFTYPE database) {
  TYPEDESC type = {};
  type.vt = parameter.value_type();
  if (type.vt == kDatabaseType) {
    type.vt = VT_USERDEFINED;
    type.hreftype = database;
  }
  return type;
}

void describe_parameter(const Parameter& parameter, std::size_t index, HREFTYPE database, FunctionParts& parts) {
  ELEMDESC& element = parts.parameters[index];
  element = {};
  const TYPEDESC type = type_desc(parameter, database);
  element.tdesc = type;
  element.paramdesc.wParamFlags = PARAMFLAG_FIN;
  if (parameter.by_reference() || type.vt == VT_USERDEFINED) {
    parts.pointed[index] = type;
    element.tdesc.vt = VT_PTR;
    element.tdesc.lptdesc = &parts.pointed[index];
  }
  if (parameter.by_reference()) element.paramdesc.wParamFlags |= PARAMFLAG_FOUT;
  if (!parameter.optional()) return;
  element.paramdesc.wParamFlags |= PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT;
  PARAMDESCEX& described = parts.defaults[index];
  described.cBytes = sizeof(PARAMDESCEX);
  if (parameter.default_value.kind == DefaultValue::Kind::text) {
    parts.default_texts[index] = ScopedBstr(as_text(parameter.default_value.text));
    V_VT(&described.varDefaultValue) = VT_BSTR;
    V_BSTR(&described.varDefaultValue) = parts.default_texts[index].get();
  } else {
    V_VT(&described.varDefaultValue) = VT_I2;
    V_I2(&described.varDefaultValue) = parameter.default_value.int16;
  }
  element.paramdesc.pparamdescex = &described;
}

void describe_result(VARTYPE result, std::size_t index, FunctionParts& parts) {
  ELEMDESC& element = parts.parameters[index];
  element = {};
  parts.pointed[index].vt = result;
  element.tdesc.vt = VT_PTR;
  element.tdesc.lptdesc = &parts.pointed[index];
  element.paramdesc.wParamFlags = PARAMFLAG_FOUT | PARAMFLAG_FRETVAL;
}

void add_operation(ICreateTypeInfo* type, UINT index, const Operation& operation, HREFTYPE database) {
  const bool has_result = operation.result != VT_VOID;
  const std::size_t count = operation.parameter_count + (has_result ? 1 : 0);
  FunctionParts parts(count);
  parts.names.push_back(wide(operation.name));
  for (std::size_t i = 0; i < operation.parameter_count; ++i) {
    describe_parameter(operation.parameters()[i], i, database, parts);
    parts.names.push_back(wide(operation.parameters()[i].name));
  }
  if (has_result) describe_result(operation.result, count - 1, parts);

  FUNCDESC function = {};
  function.memid = operation.dispid;
  function.funckind = FUNC_PUREVIRTUAL;
  function.invkind = INVOKE_FUNC;
  function.callconv = CC_STDCALL;
  function.cParams = static_cast<SHORT>(count);
  function.lprgelemdescParam = parts.parameters.data();
  function.elemdescFunc.tdesc.vt = VT_HRESULT;
  function.oVft = static_cast<SHORT>((kInheritedMembers + index) * sizeof(void*));
  check(type->AddFuncDesc(index, &function), "AddFuncDesc");

  std::vector<LPOLESTR> names;
  for (std::wstring& name : parts.names) names.push_back(name.data());
  check(type->SetFuncAndParamNames(index, names.data(), static_cast<UINT>(names.size())), "SetFuncAndParamNames");
  std::wstring help = wide(operation.help);
  check(type->SetFuncDocString(index, help.data()), "SetFuncDocString");
}

void add_class(ICreateTypeLib2* library, const ClassDescription& description, ITypeInfo* database) {
  const auto interface_type =
      create_type(library, description.interface_name, TKIND_INTERFACE, description.interface_id, kInterfaceFlags);
  derive_from_dispatch(interface_type.Get());
  HREFTYPE database_reference = 0;
  check(interface_type->AddRefTypeInfo(database, &database_reference), "AddRefTypeInfo of Database");
  UINT index = 0;
  for (const Operation& operation : description.operations) {
    add_operation(interface_type.Get(), index++, operation, database_reference);
  }
  check(interface_type->LayOut(), "LayOut of an interface");

  const auto class_type =
      create_type(library, description.name, TKIND_COCLASS, description.class_id, TYPEFLAG_FCANCREATE);
  check(class_type->SetDocString(const_cast<wchar_t*>(description.help)), "SetDocString of a class");
  ComPtr<ITypeInfo> readable;
  check(interface_type.As(&readable), "ITypeInfo of an interface");
  HREFTYPE reference = 0;
  check(class_type->AddRefTypeInfo(readable.Get(), &reference), "AddRefTypeInfo of an interface");
  check(class_type->AddImplType(0, reference), "AddImplType of a class");
  check(class_type->SetImplTypeFlags(0, IMPLTYPEFLAG_FDEFAULT), "SetImplTypeFlags");
  // Again: AddImplType takes the library's first interface for IDispatch and marks the class as dispatchable.
  check(class_type->SetTypeFlags(TYPEFLAG_FCANCREATE), "SetTypeFlags of a class");
  check(class_type->LayOut(), "LayOut of a class");
}

void write_library(const wchar_t* path, ITypeInfo* database) {
  ComPtr<ICreateTypeLib2> library;
  check(CreateTypeLib2(kSystemKind, path, &library), "CreateTypeLib2");
  check(library->SetGuid(kLibraryId), "SetGuid");
  check(library->SetVersion(kLibraryMajor, kLibraryMinor), "SetVersion");
  check(library->SetName(const_cast<wchar_t*>(kLibraryName)), "SetName");
  check(library->SetDocString(const_cast<wchar_t*>(kLibraryHelp)), "SetDocString");
  check(library->SetLcid(LOCALE_NEUTRAL), "SetLcid");
  for (const ClassDescription* description : kClasses) add_class(library.Get(), *description, database);
  check(library->SaveAllChanges(), "SaveAllChanges");
}

void check_default(const Parameter& parameter, const ELEMDESC& element) {
  const bool has_default = (element.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0;
  require(has_default == parameter.optional(), "a default is missing or too many");
  if (!has_default) return;
  const VARIANT& value = element.paramdesc.pparamdescex->varDefaultValue;
  if (parameter.default_value.kind == DefaultValue::Kind::text) {
    require(V_VT(&value) == VT_BSTR && text_of(V_BSTR(&value)) == as_text(parameter.default_value.text),
            "reading a default text back");
  } else {
    require(V_VT(&value) == VT_I2 && V_I2(&value) == parameter.default_value.int16, "reading a default number back");
  }
}

void check_operation(ITypeInfo* type, UINT index, const Operation& operation) {
  FUNCDESC* function = nullptr;
  check(type->GetFuncDesc(index, &function), "GetFuncDesc");
  require(function->memid == operation.dispid, "reading a DISPID back");
  require(function->oVft == static_cast<SHORT>((kInheritedMembers + index) * sizeof(void*)),
          "reading a vtable offset back");
  for (std::size_t i = 0; i < operation.parameter_count; ++i) {
    check_default(operation.parameters()[i], function->lprgelemdescParam[i]);
  }
  type->ReleaseFuncDesc(function);
}

void check_library(const wchar_t* path) {
  ComPtr<ITypeLib> library;
  check(LoadTypeLibEx(path, REGKIND_NONE, &library), "reading the library back");
  for (const ClassDescription* description : kClasses) {
    ComPtr<ITypeInfo> dispatch;
    check(library->GetTypeInfoOfGuid(description->interface_id, &dispatch), "finding an interface");
    HREFTYPE vtable = 0;
    check(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &vtable), "the vtable side of an interface");
    ComPtr<ITypeInfo> type;
    check(dispatch->GetRefTypeInfo(vtable, &type), "the vtable type of an interface");
    UINT index = 0;
    for (const Operation& operation : description->operations) check_operation(type.Get(), index++, operation);
  }
}

}  // namespace
}  // namespace corvelle

int wmain(int count, wchar_t** arguments) {
  if (count != 3) {
    std::fputs("usage: make_type_library OUTPUT.tlb DATA_ACCESS_STUB.tlb\n", stderr);
    return 2;
  }
  if (GetACP() != 936) {
    std::fputs("make_type_library: run it with ANSI code page 936, or the default texts are lost\n", stderr);
    return 2;
  }
  CoInitialize(nullptr);
  const auto database = corvelle::write_data_access_stub(arguments[2]);
  corvelle::write_library(arguments[1], database.Get());
  corvelle::check_library(arguments[1]);
  return 0;
}
