// component/exports.cpp - the four entry points of an in-process server, and the loader's.

#include <windows.h>

#include "component/class_factory.h"
#include "component/module.h"
#include "component/registration.h"

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, void** result) {
  return corvelle::class_factory(class_id, interface_id, result);
}

STDAPI DllCanUnloadNow() { return corvelle::module_in_use() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return corvelle::register_server(); }

STDAPI DllUnregisterServer() { return corvelle::unregister_server(); }
