#include "component/type_information.h"

#include <oleauto.h>
#include <wrl/client.h>

#include "base/wide_windows.h"
#include "component/identifiers.h"
#include "component/module.h"

namespace corvelle {
namespace {

using Microsoft::WRL::ComPtr;

// Where a path ends in this, the system reads the DLL's second library instead of its first.
constexpr std::u16string_view kSelfContainedLibrary = u"\\2";

bool leads_to_a_type(ITypeInfo& type, const TYPEDESC& description) {
  if (description.vt == VT_PTR) return leads_to_a_type(type, *description.lptdesc);
  if (description.vt != VT_USERDEFINED) return true;
  ComPtr<ITypeInfo> referred;
  return SUCCEEDED(type.GetRefTypeInfo(description.hreftype, &referred));
}

// Whether each parameter's type can be found here, whatever library it is of.
bool every_type_is_here(ITypeInfo& type) {
  bool here = true;
  FUNCDESC* function = nullptr;
  for (UINT index = 0; here && SUCCEEDED(type.GetFuncDesc(index, &function)); ++index) {
    for (SHORT i = 0; here && i < function->cParams; ++i) {
      here = leads_to_a_type(type, function->lprgelemdescParam[i].tdesc);
    }
    type.ReleaseFuncDesc(function);
  }
  return here;
}

}  // namespace

HRESULT type_information(REFGUID id, ITypeInfo** result) {
  // Not kept: nothing may be released while the DLL is being unloaded, and hosts ask for it once.
  const Text path = module_path();
  if (path.failed()) return E_OUTOFMEMORY;
  ComPtr<ITypeLib> library;
  HRESULT loaded = LoadTypeLibEx(as_wide(path), REGKIND_NONE, &library);
  if (FAILED(loaded)) return loaded;
  ComPtr<ITypeInfo> operations;
  loaded = library->GetTypeInfoOfGuid(kClsValidateInterfaceId, &operations);
  if (FAILED(loaded)) return loaded;
  if (!every_type_is_here(*operations.Get())) {
    const Text other = joined({{path, kSelfContainedLibrary}});
    if (other.failed()) return E_OUTOFMEMORY;
    loaded = LoadTypeLibEx(as_wide(other), REGKIND_NONE, &library);
    if (FAILED(loaded)) return loaded;
  }
  return library->GetTypeInfoOfGuid(id, result);
}

}  // namespace corvelle
