#include "console/list.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <vector>

#include "component/automation.h"
#include "component/class_description.h"
#include "console/late_call.h"
#include "console/place.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

using Microsoft::WRL::ComPtr;

constexpr UINT kMostNames = 1 + kMaxParameters;

// Of the type library that hosts see, or else of the files that a package has side by side.
HRESULT load_library(ComPtr<ITypeLib>* library) {
  HRESULT loaded = LoadRegTypeLib(kLibraryId, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, library->GetAddressOf());
  for (const wchar_t* name : {L"Corvelle.dll", L"Corvelle.tlb"}) {
    if (SUCCEEDED(loaded)) break;
    loaded = LoadTypeLibEx(beside_this_program(name).c_str(), REGKIND_NONE, library->GetAddressOf());
  }
  return loaded;
}

// As Visual Basic calls the types.
std::wstring type_name(const TYPEDESC& type) {
  switch (type.vt) {
    case VT_I2: return L"Integer";
    case VT_I4: return L"Long";
    case VT_R8: return L"Double";
    case VT_DATE: return L"Date";
    case VT_BOOL: return L"Boolean";
    case VT_BSTR: return L"String";
    case VT_VARIANT: return L"Variant";
    case VT_PTR: return type_name(*type.lptdesc);
    case VT_USERDEFINED: return L"Database";  // the only foreign type; its own library need not be here
    default: return L"Object";
  }
}

bool by_reference(const TYPEDESC& type) { return type.vt == VT_PTR && type.lptdesc->vt != VT_USERDEFINED; }

std::wstring default_of(const PARAMDESC& parameter) {
  const VARIANT& value = parameter.pparamdescex->varDefaultValue;
  return V_VT(&value) == VT_BSTR ? L"\"" + shown(value) + L"\"" : shown(value);
}

std::wstring parameter_text(const ELEMDESC& parameter, const std::wstring& name) {
  const std::wstring declared =
      (by_reference(parameter.tdesc) ? L"ByRef " : L"") + name + L" As " + type_name(parameter.tdesc);
  if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) == 0) return declared;
  const bool has_default = (parameter.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0;
  return L"[" + declared + (has_default ? L" = " + default_of(parameter.paramdesc) : L"") + L"]";
}

// "Set_String1(strName As String, lngLen As Long, [Flag As Integer = 0]) As String"
std::wstring signature(const FUNCDESC& function, const std::vector<ScopedBstr>& names) {
  std::wstring text = std::wstring(names[0].get()) + L"(";
  for (SHORT i = 0; i < function.cParams; ++i) {
    if (i > 0) text += L", ";
    text += parameter_text(function.lprgelemdescParam[i], names[static_cast<std::size_t>(i) + 1].get());
  }
  text += L")";
  if (function.elemdescFunc.tdesc.vt != VT_VOID) text += L" As " + type_name(function.elemdescFunc.tdesc);
  return text;
}

std::vector<ScopedBstr> names_of(ITypeInfo* type, MEMBERID member) {
  BSTR received[kMostNames] = {};
  UINT count = 0;
  type->GetNames(member, received, kMostNames, &count);
  std::vector<ScopedBstr> names(kMostNames);
  for (UINT i = 0; i < count; ++i) *names[i].receive() = received[i];
  return names;
}

// Shows `use` each member of an interface, as late-bound callers see it, but for automation's own, which stand below.
template <class Use>
void for_each_operation(ITypeInfo* type, Use&& use) {
  constexpr MEMBERID kFirstOfInterface = 0x60030000;
  for (UINT index = 0;; ++index) {
    FUNCDESC* function = nullptr;
    if (FAILED(type->GetFuncDesc(index, &function))) return;
    if (function->memid >= kFirstOfInterface) use(*function, names_of(type, function->memid));
    type->ReleaseFuncDesc(function);
  }
}

std::wstring help_of(ITypeInfo* type, MEMBERID member) {
  ScopedBstr help;
  type->GetDocumentation(member, nullptr, help.receive(), nullptr, nullptr);
  return {help.get() != nullptr ? help.get() : L"", help.view().size()};
}

HRESULT append_class(ITypeLib* library, const ClassDescription& description, std::wstring& text) {
  ComPtr<ITypeInfo> type;
  if (const HRESULT found = library->GetTypeInfoOfGuid(description.interface_id, &type); FAILED(found)) return found;
  text += std::wstring(text.empty() ? L"" : L"\n") + description.prog_id + L"\n";
  for_each_operation(type.Get(), [&](const FUNCDESC& function, const std::vector<ScopedBstr>& names) {
    text += L"  " + signature(function, names) + L"\n      " + help_of(type.Get(), function.memid) + L"\n";
  });
  return S_OK;
}

}  // namespace

ExitStatus list_operations(const Streams& streams) {
  ComPtr<ITypeLib> library;
  HRESULT result = load_library(&library);
  std::wstring text;
  for (const ClassDescription* description : kClasses) {
    if (SUCCEEDED(result)) result = append_class(library.Get(), *description, text);
  }
  if (FAILED(result)) {
    streams.error.print_line(L"The type library can be read neither from the registered component nor from " +
                             beside_this_program(L"Corvelle.dll") + L". " + explained(result));
    return ExitStatus::failed;
  }
  streams.out.print(text);
  return ExitStatus::ok;
}

std::wstring signature_of(IDispatch* object, const std::wstring& operation) {
  ComPtr<ITypeInfo> type;
  std::wstring found;
  if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type))) return found;
  for_each_operation(type.Get(), [&](const FUNCDESC& function, const std::vector<ScopedBstr>& names) {
    if (same_name(names[0].get(), operation)) found = signature(function, names);
  });
  return found;
}

}  // namespace corvelle::console
