// component/exports.cpp - the four entry points of an in-process server, and the loader's.

#include <windows.h>

#include "component/class_factory.h"
#include "component/module.h"
#include "component/registration.h"
#include "text/text_slot_windows.h"

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, void** result) {
  return corvelle::class_factory(class_id, interface_id, result);
}

STDAPI DllCanUnloadNow() { return corvelle::module_in_use() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return corvelle::register_server(); }

STDAPI DllUnregisterServer() { return corvelle::unregister_server(); }

// `reserved` is null when the DLL is unloaded, and not at the end of the process, when the system takes all back.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID reserved) {
  switch (reason) {
    case DLL_PROCESS_ATTACH: return corvelle::attach_text_slots() ? TRUE : FALSE;
    case DLL_THREAD_DETACH: corvelle::detach_thread_text_slot(); break;
    case DLL_PROCESS_DETACH:
      if (reserved == nullptr) corvelle::detach_text_slots();
      break;
    default: break;
  }
  return TRUE;
}
