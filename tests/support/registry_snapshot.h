// tests/support/registry_snapshot.h - a part of the registry as text, to compare and to print.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace corvelle::testing {

// Every key and value below `path` of `root`, the key itself included, one line each, in the order of their names:
//   CLSID\{…}\InprocServer32
//   CLSID\{…}\InprocServer32 ThreadingModel = "Apartment"
// A value that is not a REG_SZ shows its type and bytes. Empty when the key is not there. `view` as for RegOpenKeyEx.
std::vector<std::wstring> registry_snapshot(HKEY root, const std::wstring& path, REGSAM view = 0);

// The machine's classes while it lives are a key of the test's own, by whichever name they are opened.
class TemporaryClassesRoot {
 public:
  TemporaryClassesRoot();
  ~TemporaryClassesRoot();
  TemporaryClassesRoot(const TemporaryClassesRoot&) = delete;
  TemporaryClassesRoot& operator=(const TemporaryClassesRoot&) = delete;

  HKEY key() const { return key_; }
  // Everything below the key.
  std::vector<std::wstring> snapshot() const { return registry_snapshot(key_, L""); }

 private:
  HKEY machine_ = nullptr;
  HKEY key_ = nullptr;
  std::wstring path_;
};

}  // namespace corvelle::testing
