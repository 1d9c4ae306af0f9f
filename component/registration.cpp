#include "component/registration.h"

#include <optional>
#include <string>
#include <vector>

#include "component/boundary.h"
#include "component/class_description.h"
#include "component/module.h"
#include "component/registration_keys.h"
#include "component/registry.h"

namespace corvelle {
namespace {

constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr REGSAM kOtherView = KEY_WOW64_32KEY;
#else
constexpr REGSAM kOtherView = KEY_WOW64_64KEY;
#endif

void add_class(std::vector<RegistryValue>& values, const ClassDescription& description, const std::wstring& file) {
  const std::wstring program = description.prog_id;
  const std::wstring class_id = text_of_id(description.class_id);
  const std::wstring key = class_key(description);
  values.insert(values.end(), {{program, L"", program},
                               {program + L"\\Clsid", L"", class_id},
                               {key, L"", program},
                               {server_key(description), L"", file},
                               {server_key(description), L"ThreadingModel", L"Apartment"},
                               {key + L"\\ProgID", L"", program},
                               {key + L"\\VERSION", L"", kVersion},
                               {key + L"\\TypeLib", L"", text_of_id(kLibraryId)}});
}

void add_interface(std::vector<RegistryValue>& values, const ClassDescription& description) {
  const std::wstring key = interface_key(description);
  values.insert(values.end(), {{key, L"", description.interface_name},
                               {key + L"\\ProxyStubClsid32", L"", kTypeLibraryMarshaller},
                               {key + L"\\TypeLib", L"", text_of_id(kLibraryId)},
                               {key + L"\\TypeLib", L"Version", kVersion}});
}

// What is registered, and where.
struct Target {
  ClassesRoot root;
  std::wstring file;
};

std::vector<RegistryValue> registration_of(const std::wstring& file) {
  std::vector<RegistryValue> values;
  for (const ClassDescription* description : kClasses) {
    add_class(values, *description, file);
    add_interface(values, *description);
  }
  values.insert(values.end(), {{library_version_key(), L"", kLibraryName},
                               {library_file_key(), L"", file},
                               {library_version_key() + L"\\FLAGS", L"", L"0"},
                               {library_version_key() + L"\\HELPDIR", L"", file.substr(0, file.rfind(L'\\'))}});
  return values;
}

// What tells a file from every other, however its path is written: short names, links, the system's own aliases.
struct FileIdentity {
  DWORD volume = 0;
  DWORD index_high = 0;
  DWORD index_low = 0;
  bool operator==(const FileIdentity&) const = default;
};

// Where anyone may write the path, it may name a pipe, whose other end must not act in this program's name.
std::optional<FileIdentity> identity_of(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  BY_HANDLE_FILE_INFORMATION found = {};
  const bool known = GetFileInformationByHandle(file, &found) != FALSE;
  CloseHandle(file);
  if (!known) return {};
  return FileIdentity{found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow};
}

// Whether another file than the target's is registered at `key`. What no file holds is ours to remove, too: a removal
// or a registration that failed half-way left it behind.
bool is_another_file_at(const std::wstring& key, const Target& target) {
  const auto registered = read_registry(target.root, key, L"");
  if (!registered || *registered == target.file) return false;
  const auto identity = identity_of(*registered);
  return !identity || identity != identity_of(target.file);
}

bool has_server(const ClassesRoot& root, const ClassDescription& description) {
  return read_registry(root, server_key(description), L"") ||
         read_registry(root, server_key(description), L"", kOtherView);
}

// Both bitnesses share the ProgID; on 32-bit Windows both views are the same. One that names another class is not ours.
LSTATUS remove_program(const ClassesRoot& root, const ClassDescription& description) {
  const std::wstring program = description.prog_id;
  const auto named = read_registry(root, program + L"\\Clsid", L"");
  const bool names_another = named && *named != text_of_id(description.class_id);
  return names_another || has_server(root, description) ? ERROR_SUCCESS : remove_key_tree(root, program);
}

LSTATUS remove_class(const ClassDescription& description, const Target& target) {
  if (!is_another_file_at(server_key(description), target)) {
    for (const std::wstring& key : {interface_key(description), class_key(description)}) {
      if (const LSTATUS removed = remove_key_tree(target.root, key); removed != ERROR_SUCCESS) return removed;
    }
  }
  return remove_program(target.root, description);
}

// The bitnesses share all of the library's entry but the key of the file.
LSTATUS remove_library(const Target& target) {
  const ClassesRoot& root = target.root;
  LSTATUS removed = ERROR_SUCCESS;
  if (!is_another_file_at(library_file_key(), target)) removed = remove_key_tree(root, library_file_key());
  if (removed == ERROR_SUCCESS && !has_subkeys(root, library_language_key())) {
    removed = remove_key_tree(root, library_version_key());
  }
  if (removed == ERROR_SUCCESS && !has_subkeys(root, library_key())) removed = remove_key_tree(root, library_key());
  return removed;
}

LSTATUS write_all(const Target& target) {
  RegistryTransaction transaction(target.root);
  for (const RegistryValue& value : registration_of(target.file)) {
    if (const LSTATUS written = transaction.write(value); written != ERROR_SUCCESS) return written;
  }
  transaction.commit();
  return ERROR_SUCCESS;
}

LSTATUS remove_all(const Target& target) {
  for (const ClassDescription* description : kClasses) {
    if (const LSTATUS removed = remove_class(*description, target); removed != ERROR_SUCCESS) return removed;
  }
  return remove_library(target);
}

// Runs a registration step; running out of memory is its only exception.
template <class Step>
HRESULT registered(Step&& step) noexcept {
  LSTATUS status = ERROR_SUCCESS;
  const HRESULT guarded = corvelle::guarded(kClsValidateClass, [&] { status = step(); });
  return FAILED(guarded) ? guarded : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

}  // namespace

HRESULT register_server() noexcept {
  return registered([] { return write_all({.root = kMachineClasses, .file = module_path()}); });
}

HRESULT unregister_server() noexcept {
  return registered([] { return remove_all({.root = kMachineClasses, .file = module_path()}); });
}

HRESULT register_for_user(const std::wstring& file) noexcept {
  return registered([&] { return write_all({.root = kUserClasses, .file = file}); });
}

HRESULT unregister_for_user(const std::wstring& file) noexcept {
  return registered([&] { return remove_all({.root = kUserClasses, .file = file}); });
}

}  // namespace corvelle
