// tests/component/registration/machine.h - the machine as a user of the component sees it: regsvr32, hosts, registry.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace corvelle::testing {

enum class Bitness { k32, k64 };
inline constexpr Bitness kOwnBitness = sizeof(void*) == 8 ? Bitness::k64 : Bitness::k32;
inline constexpr Bitness kOtherBitness = sizeof(void*) == 8 ? Bitness::k32 : Bitness::k64;

// The built DLL.
std::wstring built_dll(Bitness bitness);

// Runs the real regsvr32 silently; its exit code, 0 on success.
DWORD regsvr32(Bitness bitness, const std::wstring& dll);
DWORD regsvr32_remove(Bitness bitness, const std::wstring& dll);

// Whether a script host of that bitness creates both classes by their ProgIDs and gets a right answer from a call.
bool host_works(Bitness bitness);

// CoCreateInstance in this process, by the CLSID of ClsValidate.
HRESULT create_class();

// Every key and value of the component in both views of the registry; empty when nothing is registered.
std::vector<std::wstring> component_keys();

// Removes every key of the component by force: what an earlier test that failed left behind.
void remove_component_keys();

// Sets the default value of a key below one user's or the machine's classes, which is made where it is missing.
void set_default(HKEY root, const std::wstring& key, const std::wstring& value, REGSAM view = 0);

// A folder below the temporary one with a copy of the built DLL, until it is destroyed.
class CopyOfDll {
 public:
  explicit CopyOfDll(const std::wstring& folder_name, Bitness bitness = kOwnBitness);
  ~CopyOfDll();
  CopyOfDll(const CopyOfDll&) = delete;
  CopyOfDll& operator=(const CopyOfDll&) = delete;

  const std::wstring& path() const { return path_; }

 private:
  std::wstring folder_;
  std::wstring path_;
};

// Denies everyone every change of a key's own values and the creation and deletion of keys in it, until it is
// destroyed.
class WriteProtectedKey {
 public:
  WriteProtectedKey(HKEY root, const std::wstring& path, REGSAM view);
  ~WriteProtectedKey();
  WriteProtectedKey(const WriteProtectedKey&) = delete;
  WriteProtectedKey& operator=(const WriteProtectedKey&) = delete;

 private:
  HKEY key_ = nullptr;
  std::vector<BYTE> before_;
};

}  // namespace corvelle::testing
