// How a host gets at the component's classes and calls them, where there is neither a registry nor a module.
#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <string_view>

#include "component/automation.h"
#include "component/class_description.h"
#include "component/class_factory.h"

HRESULT CoInitializeEx(void* /*reserved*/, DWORD /*model*/) { return S_OK; }

void CoUninitialize() { SetErrorInfo(0, nullptr); }

HRESULT CLSIDFromProgID(LPCOLESTR prog_id, CLSID* class_id) {
  for (const corvelle::ClassDescription* description : corvelle::kClasses) {
    if (corvelle::as_text(description->prog_id) != corvelle::as_text(prog_id)) continue;
    *class_id = description->class_id;
    return S_OK;
  }
  return CO_E_CLASSSTRING;
}

HRESULT CoGetClassObject(REFCLSID class_id, DWORD /*context*/, void* /*server*/, REFIID interface_id, void** result) {
  return corvelle::class_factory(class_id, interface_id, result);
}

HRESULT CoCreateInstance(REFCLSID class_id, IUnknown* outer, DWORD context, REFIID interface_id, void** result) {
  Microsoft::WRL::ComPtr<IClassFactory> factory;
  const HRESULT found = CoGetClassObject(class_id, context, nullptr, IID_PPV_ARGS(&factory));
  return FAILED(found) ? found : factory->CreateInstance(outer, interface_id, result);
}

// Whole numbers and pointers, doubles, and structures go to a function by three ways that do not touch one another, so
// one signature calls every member that takes at most one double, and at most one VARIANT by value.
HRESULT DispCallFunc(void* object, ULONG_PTR offset, CALLCONV /*convention*/, VARTYPE type, UINT count, VARTYPE* types,
                     VARIANTARG** arguments, VARIANT* result) {
#ifndef __x86_64__
#error "how this processor's calls pass their arguments is not written down here"
#endif
  using Function = HRESULT (*)(void*, LONGLONG, LONGLONG, LONGLONG, LONGLONG, LONGLONG, double, VARIANT);
  LONGLONG whole[5] = {};
  double real = 0;
  VARIANT variant = {};
  UINT used = 0;
  for (UINT i = 0; i < count; ++i) {
    if (types[i] == VT_R8 || types[i] == VT_DATE) {
      real = arguments[i]->dblVal;
    } else if (types[i] == VT_VARIANT) {
      variant = *arguments[i];
    } else {
      whole[used++] = types[i] == VT_I2 ? arguments[i]->iVal : arguments[i]->llVal;
    }
  }
  const char* table = *static_cast<const char* const*>(object);
  const auto function = *reinterpret_cast<const Function*>(table + offset);
  result->scode = function(object, whole[0], whole[1], whole[2], whole[3], whole[4], real, variant);
  result->vt = type;
  return S_OK;
}
