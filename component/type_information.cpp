#include "component/type_information.h"

#include <oleauto.h>
#include <wrl/client.h>

#include "component/module.h"

namespace corvelle {

HRESULT type_information(REFGUID id, ITypeInfo** result) {
  // Not kept: nothing may be released while the DLL is being unloaded, and hosts ask for it once.
  Microsoft::WRL::ComPtr<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(module_path().c_str(), REGKIND_NONE, &library);
  return FAILED(loaded) ? loaded : library->GetTypeInfoOfGuid(id, result);
}

}  // namespace corvelle
