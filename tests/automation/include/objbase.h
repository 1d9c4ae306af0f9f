// tests/automation/include/objbase.h - how a host gets the component's objects.
#pragma once

#include "tests/automation/include/unknwn.h"

inline constexpr DWORD COINIT_APARTMENTTHREADED = 2;
inline constexpr DWORD CLSCTX_INPROC_SERVER = 1;

HRESULT CoInitializeEx(void* reserved, DWORD model);
void CoUninitialize();

// The classes of the component are registered, and no others.
HRESULT CLSIDFromProgID(LPCOLESTR prog_id, CLSID* class_id);
HRESULT CoGetClassObject(REFCLSID class_id, DWORD context, void* server, REFIID interface_id, void** result);
HRESULT CoCreateInstance(REFCLSID class_id, IUnknown* outer, DWORD context, REFIID interface_id, void** result);
