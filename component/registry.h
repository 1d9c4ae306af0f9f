// component/registry.h - the few things that registration does with the registry.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace corvelle {

// One text value; an empty name is the key's default value. Keys are below a ClassesRoot.
struct RegistryValue {
  std::wstring key;
  std::wstring name;
  std::wstring data;
};

// What a value holds, whatever its type.
struct RegistryContent {
  DWORD type = REG_NONE;
  std::vector<BYTE> bytes;
};

// Where classes are registered: those of this user, or of the machine. HKEY_CLASSES_ROOT shows both as one, but writes
// to the user's entry where there is one, and removes that first.
struct ClassesRoot {
  HKEY key;
  const wchar_t* path;  // with a backslash at its end

  std::wstring path_of(const std::wstring& key_name) const { return path + key_name; }
};
inline constexpr wchar_t kClassesPath[] = L"Software\\Classes\\";
inline const ClassesRoot kUserClasses = {.key = HKEY_CURRENT_USER, .path = kClassesPath};
inline const ClassesRoot kMachineClasses = {.key = HKEY_LOCAL_MACHINE, .path = kClassesPath};

// The text at `key`; none where key or value is missing, or the value is no text or longer than any path. `view` is 0,
// KEY_WOW64_32KEY or KEY_WOW64_64KEY.
std::optional<std::wstring> read_registry(const ClassesRoot& root, const std::wstring& key, const std::wstring& name,
                                          REGSAM view = 0);

// Whether `key` exists and has a key below it.
bool has_subkeys(const ClassesRoot& root, const std::wstring& key);

// Removes `key` and all below it. ERROR_SUCCESS also when it is not there. A key below that cannot be named stays, and
// is ERROR_INVALID_NAME.
LSTATUS remove_key_tree(const ClassesRoot& root, const std::wstring& key);

// Writes values, and undoes every one of them, keys included, unless it is committed.
class RegistryTransaction {
 public:
  explicit RegistryTransaction(const ClassesRoot& root) : root_(root) {}
  ~RegistryTransaction();
  RegistryTransaction(const RegistryTransaction&) = delete;
  RegistryTransaction& operator=(const RegistryTransaction&) = delete;

  // ERROR_SUCCESS, or the system's error, after which nothing more should be written.
  LSTATUS write(const RegistryValue& value);
  void commit() { undo_.clear(); }

 private:
  // How to take one step back: delete the key, or give the value its content back, if it had one.
  struct Undo {
    std::wstring path;  // below the root's key
    bool key_created = false;
    std::wstring name;
    std::optional<RegistryContent> before;
  };

  LSTATUS create_key(const std::wstring& path);
  void take_back(const Undo& step) const;

  ClassesRoot root_;
  std::vector<Undo> undo_;
};

}  // namespace corvelle
