// component/registry.h - the few things that registration does with the registry.
//
// Each gives ERROR_SUCCESS or the system's error; ERROR_OUTOFMEMORY is one of those.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "base/from_heap.h"
#include "base/text.h"
#include "component/registration_keys.h"

namespace corvelle {

// Where classes are registered: those of this user, or of the machine. HKEY_CLASSES_ROOT shows both as one, but writes
// to the user's entry where there is one, and removes that first.
struct ClassesRoot {
  HKEY key;
  std::wstring_view path;
  KeyPath path_of(std::wstring_view key_name) const { return key_path({path, key_name}); }
};

inline constexpr std::wstring_view kClassesPath = L"Software\\Classes";
inline const ClassesRoot kUserClasses = {.key = HKEY_CURRENT_USER, .path = kClassesPath};
inline const ClassesRoot kMachineClasses = {.key = HKEY_LOCAL_MACHINE, .path = kClassesPath};

// What a value holds, whatever its type.
struct RegistryContent {
  struct Free {
    void operator()(BYTE* block) const { std::free(block); }
  };
  DWORD type = REG_NONE;
  DWORD size = 0;  // in bytes
  std::unique_ptr<BYTE, Free> bytes;
};

// Puts the text of the value `name` at `key` into `*text`. `view` is 0, KEY_WOW64_32KEY or KEY_WOW64_64KEY.
// ERROR_FILE_NOT_FOUND where key or value is missing, or the value is no text or longer than any path.
LSTATUS read_registry(const ClassesRoot& root, std::wstring_view key, const wchar_t* name, REGSAM view, Text* text);

// Whether `key` exists and has a key below it.
bool has_subkeys(const ClassesRoot& root, std::wstring_view key);

// Removes `key` and all below it. ERROR_SUCCESS also when it is not there. A key below that cannot be named stays, and
// is ERROR_INVALID_NAME.
LSTATUS remove_key_tree(const ClassesRoot& root, std::wstring_view key);

// Writes values, and undoes every one of them, keys included, unless it is committed. After a failure nothing more is
// written.
//   RegistryTransaction registry(kUserClasses);
//   registry.write(L"Corvelle.ClsValidate\\Clsid", L"", L"{…}");
//   if (registry.status() == ERROR_SUCCESS) registry.commit();
class RegistryTransaction {
 public:
  explicit RegistryTransaction(const ClassesRoot& root);
  ~RegistryTransaction();
  RegistryTransaction(const RegistryTransaction&) = delete;
  RegistryTransaction& operator=(const RegistryTransaction&) = delete;

  // Writes a text; an empty `name`, which lives as long as this does, is the key's default value. Behind `data` stands
  // a NUL.
  LSTATUS write(std::wstring_view key, const wchar_t* name, std::wstring_view data);
  // The first failure.
  LSTATUS status() const { return status_; }
  void commit();

 private:
  struct Undo;

  Undo* note(const KeyPath& path, const wchar_t* name);
  void forget_last();
  LSTATUS create_key(std::wstring_view path);
  LSTATUS write_value(const KeyPath& path, const wchar_t* name, std::wstring_view data);

  ClassesRoot root_;
  LSTATUS status_ = ERROR_SUCCESS;
  std::unique_ptr<Undo> last_;
};

}  // namespace corvelle
