// tests/support/data_access_library.h - the host's data access library, or a stub in its place.
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <string>

#include "component/identifiers.h"

namespace corvelle::testing {

// The data access library's types must be found while the component's type library is read. Where a host's own is
// registered, that one serves; otherwise the stub at `stub_path` is, for as long as this lives.
class DataAccessLibrary {
 public:
  explicit DataAccessLibrary(const std::wstring& stub_path) {
    Microsoft::WRL::ComPtr<ITypeLib> library;
    if (SUCCEEDED(LoadRegTypeLib(kDataAccessLibraryId, kDataAccessMajor, kDataAccessMinor, 0, &library))) return;
    registered_ = SUCCEEDED(LoadTypeLibEx(stub_path.c_str(), REGKIND_REGISTER, &library));
  }
  ~DataAccessLibrary() {
    if (registered_) {
      UnRegisterTypeLib(kDataAccessLibraryId, kDataAccessMajor, kDataAccessMinor, 0,
                        sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    }
  }
  DataAccessLibrary(const DataAccessLibrary&) = delete;
  DataAccessLibrary& operator=(const DataAccessLibrary&) = delete;

 private:
  bool registered_ = false;
};

}  // namespace corvelle::testing
