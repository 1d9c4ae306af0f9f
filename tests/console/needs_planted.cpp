// A class's DLL that needs another DLL, which is not beside it.

#include <windows.h>

extern "C" __declspec(dllimport) HRESULT planted_function();

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID /*class_id*/,
                                                                          REFIID /*interface_id*/, void** /*result*/) {
  return planted_function();
}
