// tests/support/component_file.h - the built DLL, loaded straight from its file.
#pragma once

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace corvelle::testing {

// A copy of the DLL in memory, without COM. Throws std::runtime_error when it cannot be loaded.
class ComponentFile {
 public:
  explicit ComponentFile(const std::wstring& path) : module_(LoadLibraryW(path.c_str())) {
    if (module_ == nullptr) throw std::runtime_error("cannot load the DLL: " + std::to_string(GetLastError()));
  }
  ~ComponentFile() { FreeLibrary(module_); }
  ComponentFile(const ComponentFile&) = delete;
  ComponentFile& operator=(const ComponentFile&) = delete;

  HMODULE module() const { return module_; }
  HRESULT register_server() const { return call("DllRegisterServer"); }
  HRESULT unregister_server() const { return call("DllUnregisterServer"); }
  HRESULT class_object(REFCLSID class_id, REFIID interface_id, void** result) const {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    return entry_point<GetClassObject>("DllGetClassObject")(class_id, interface_id, result);
  }

 private:
  template <class EntryPoint>
  EntryPoint entry_point(const char* name) const {
    const FARPROC found = GetProcAddress(module_, name);
    if (found == nullptr) throw std::runtime_error(std::string("no export ") + name);
    return reinterpret_cast<EntryPoint>(reinterpret_cast<void*>(found));
  }
  HRESULT call(const char* name) const { return entry_point<HRESULT(STDAPICALLTYPE*)()>(name)(); }

  HMODULE module_;
};

}  // namespace corvelle::testing
