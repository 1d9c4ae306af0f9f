// Where the component's own file would be asked for.
#include <windows.h>

#include "component/type_information.h"

BOOL GetModuleHandleExW(DWORD /*flags*/, LPCWSTR /*name*/, HMODULE* module) {
  *module = nullptr;
  return FALSE;
}

DWORD GetModuleFileNameW(HMODULE /*module*/, LPWSTR /*path*/, DWORD /*size*/) { return 0; }

namespace corvelle {

HRESULT type_information(REFGUID /*id*/, ITypeInfo** /*result*/) { return TYPE_E_CANTLOADLIBRARY; }

}  // namespace corvelle
