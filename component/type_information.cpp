#include "component/type_information.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <string>

#include "component/identifiers.h"
#include "component/module.h"

namespace corvelle {
namespace {

using Microsoft::WRL::ComPtr;

// Where a path ends in this, the system reads the DLL's second library instead of its first.
constexpr wchar_t kSelfContainedLibrary[] = L"\\2";

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
  const std::wstring path = module_path();
  ComPtr<ITypeLib> library;
  HRESULT loaded = LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library);
  if (FAILED(loaded)) return loaded;
  ComPtr<ITypeInfo> operations;
  loaded = library->GetTypeInfoOfGuid(kClsValidateInterfaceId, &operations);
  if (FAILED(loaded)) return loaded;
  if (!every_type_is_here(*operations.Get())) {
    loaded = LoadTypeLibEx((path + kSelfContainedLibrary).c_str(), REGKIND_NONE, &library);
    if (FAILED(loaded)) return loaded;
  }
  return library->GetTypeInfoOfGuid(id, result);
}

}  // namespace corvelle
