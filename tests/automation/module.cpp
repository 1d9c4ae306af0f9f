// Where the component's own file would be asked for.
#include <windows.h>

#include <oleauto.h>

BOOL GetModuleHandleExW(DWORD /*flags*/, LPCWSTR /*name*/, HMODULE* module) {
  *module = nullptr;
  return FALSE;
}

DWORD GetModuleFileNameW(HMODULE /*module*/, LPWSTR /*path*/, DWORD /*size*/) { return 0; }

HRESULT LoadTypeLibEx(LPCOLESTR /*path*/, REGKIND /*registration*/, ITypeLib** /*result*/) {
  return TYPE_E_CANTLOADLIBRARY;
}
