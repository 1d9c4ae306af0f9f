#include "console/type_library.h"

#include <oleauto.h>

#include <algorithm>
#include <optional>

#include "component/automation.h"
#include "component/registration_keys.h"
#include "console/disk_file.h"
#include "console/late_call.h"
#include "console/registry_text.h"
#include "console/surroundings.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

using Microsoft::WRL::ComPtr;

constexpr UINT kMostNames = 1 + kMaxParameters;

// A function's description, which the type information keeps.
class Function {
 public:
  Function(ITypeInfo* type, UINT index) : type_(type), found_(type->GetFuncDesc(index, &description_)) {}
  ~Function() {
    if (SUCCEEDED(found_) && description_ != nullptr) type_->ReleaseFuncDesc(description_);
  }
  Function(const Function&) = delete;
  Function& operator=(const Function&) = delete;

  HRESULT found() const { return found_; }
  const FUNCDESC* get() const { return description_; }

 private:
  ITypeInfo* type_;
  FUNCDESC* description_ = nullptr;
  HRESULT found_;
};

// As Visual Basic calls the types; none for one that leads nowhere, or to itself.
std::optional<std::wstring> type_name(const TYPEDESC& type) {
  constexpr int kMostPointers = 2;
  const TYPEDESC* pointed = &type;
  for (int pointers = 0; pointed->vt == VT_PTR; ++pointers) {
    pointed = pointed->lptdesc;
    if (pointed == nullptr || pointers == kMostPointers) return {};
  }
  switch (pointed->vt) {
    case VT_I2: return L"Integer";
    case VT_I4: return L"Long";
    case VT_R8: return L"Double";
    case VT_DATE: return L"Date";
    case VT_BOOL: return L"Boolean";
    case VT_BSTR: return L"String";
    case VT_VARIANT: return L"Variant";
    case VT_USERDEFINED: return L"Database";  // the only foreign type; its own library need not be here
    default: return L"Object";
  }
}

// Of a type that has a name.
bool by_reference(const TYPEDESC& type) { return type.vt == VT_PTR && type.lptdesc->vt != VT_USERDEFINED; }

// Of the few types that a default can have here; others may hold anything.
std::optional<std::wstring> default_of(const PARAMDESC& parameter) {
  if (parameter.pparamdescex == nullptr) return {};
  const VARIANT& value = parameter.pparamdescex->varDefaultValue;
  switch (V_VT(&value)) {
    case VT_BSTR: return L"\"" + shown(value) + L"\"";
    case VT_I2:
    case VT_I4:
    case VT_R8:
    case VT_DATE:
    case VT_BOOL: return shown(value);
    default: return {};
  }
}

std::optional<std::wstring> parameter_text(const ELEMDESC& parameter, const std::wstring& name) {
  const auto type = type_name(parameter.tdesc);
  if (!type || name.empty()) return {};
  const std::wstring declared = (by_reference(parameter.tdesc) ? L"ByRef " : L"") + name + L" As " + *type;
  if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) == 0) return declared;
  if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) return L"[" + declared + L"]";
  const auto value = default_of(parameter.paramdesc);
  return value ? std::optional(L"[" + declared + L" = " + *value + L"]") : std::nullopt;
}

// Of the member and its parameters, as many as it says: empty ones where there are fewer.
std::vector<std::wstring> names_of(ITypeInfo* type, MEMBERID member) {
  BSTR received[kMostNames] = {};
  UINT count = 0;
  type->GetNames(member, received, kMostNames, &count);
  std::vector<std::wstring> names;
  for (const BSTR text : received) {
    ScopedBstr owned;
    *owned.receive() = text;
    names.push_back(names.size() < count && text != nullptr ? std::wstring(text, SysStringLen(text)) : L"");
  }
  return names;
}

// "Set_String1(strName As String, lngLen As Long, [Flag As Integer = 0]) As String"
std::optional<std::wstring> signature(const FUNCDESC& function, const std::vector<std::wstring>& names) {
  const auto count = static_cast<std::size_t>(std::max<SHORT>(function.cParams, 0));
  const bool has_parameters = function.lprgelemdescParam != nullptr || count == 0;
  if (function.cParams < 0 || count > kMaxParameters || !has_parameters || names[0].empty()) return {};
  std::wstring text = names[0] + L"(";
  for (std::size_t i = 0; i < count; ++i) {
    const auto parameter = parameter_text(function.lprgelemdescParam[i], names[i + 1]);
    if (!parameter) return {};
    text += (i > 0 ? L", " : L"") + *parameter;
  }
  text += L")";
  if (function.elemdescFunc.tdesc.vt == VT_VOID) return text;
  const auto result = type_name(function.elemdescFunc.tdesc);
  return result ? std::optional(text + L" As " + *result) : std::nullopt;
}

bool describes(const std::vector<DescribedOperation>& operations, const Operation& published) {
  const std::wstring name(as_wide(published.name.data()), published.name.size());
  return std::any_of(operations.begin(), operations.end(),
                     [&](const DescribedOperation& operation) { return operation.name == name; });
}

}  // namespace

HRESULT operations_of(ITypeInfo* type, std::vector<DescribedOperation>* operations) {
  constexpr MEMBERID kFirstOfInterface = 0x60030000;
  constexpr UINT kMostFunctions = 1000;  // far more than there are
  for (UINT index = 0; index < kMostFunctions; ++index) {
    const Function function(type, index);
    if (FAILED(function.found())) return S_OK;
    if (function.get() == nullptr) return TYPE_E_INVDATAREAD;
    const MEMBERID member = function.get()->memid;
    if (member < kFirstOfInterface) continue;
    const std::vector<std::wstring> names = names_of(type, member);
    auto text = signature(*function.get(), names);
    if (!text) return TYPE_E_INVDATAREAD;
    operations->push_back({member, names[0], *std::move(text)});
  }
  return TYPE_E_INVDATAREAD;
}

HRESULT interface_in(ITypeLib* library, const ClassDescription& description, ComPtr<ITypeInfo>* type) {
  const HRESULT found = library->GetTypeInfoOfGuid(description.interface_id, type->ReleaseAndGetAddressOf());
  return SUCCEEDED(found) && *type == nullptr ? TYPE_E_INVDATAREAD : found;
}

// The system takes what is no file for the name of an object, which it creates.
HRESULT load_library(const std::wstring& path, ComPtr<ITypeLib>* library) {
  if (DiskFile(path).size() == 0) return TYPE_E_CANTLOADLIBRARY;
  return LoadTypeLibEx(path.c_str(), REGKIND_NONE, library->ReleaseAndGetAddressOf());
}

HRESULT load_registered_library(ComPtr<ITypeLib>* library) {
  if (!is_elevated()) {
    return LoadRegTypeLib(kLibraryId, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, library->ReleaseAndGetAddressOf());
  }
  const auto file = registry_text(kMachineClasses, library_file_key());
  return file ? load_library(*file, library) : TYPE_E_LIBNOTREGISTERED;
}

HRESULT read_library(const std::wstring& path) {
  ComPtr<ITypeLib> library;
  if (const HRESULT loaded = load_library(path, &library); FAILED(loaded)) return loaded;
  for (const ClassDescription* description : kClasses) {
    ComPtr<ITypeInfo> type;
    std::vector<DescribedOperation> operations;
    HRESULT read = interface_in(library.Get(), *description, &type);
    if (SUCCEEDED(read)) read = operations_of(type.Get(), &operations);
    if (FAILED(read)) return read;
    for (const Operation& published : description->operations) {
      if (!describes(operations, published)) return TYPE_E_ELEMENTNOTFOUND;
    }
  }
  return S_OK;
}

}  // namespace corvelle::console
