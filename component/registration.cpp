#include "component/registration.h"

#include <objbase.h>

#include <optional>
#include <string>
#include <vector>

#include "component/boundary.h"
#include "component/class_description.h"
#include "component/module.h"
#include "component/registry.h"

namespace corvelle {
namespace {

constexpr wchar_t kVersion[] = L"1.0";
constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr wchar_t kSystemKind[] = L"win64";
constexpr REGSAM kOtherView = KEY_WOW64_32KEY;
#else
constexpr wchar_t kSystemKind[] = L"win32";
constexpr REGSAM kOtherView = KEY_WOW64_64KEY;
#endif

std::wstring text_of_id(const GUID& id) {
  wchar_t text[39] = {};  // 38 characters and the terminator
  StringFromGUID2(id, text, 39);
  return text;
}

std::wstring class_key(const ClassDescription& description) { return L"CLSID\\" + text_of_id(description.class_id); }
std::wstring server_key(const ClassDescription& description) { return class_key(description) + L"\\InprocServer32"; }
std::wstring interface_key(const ClassDescription& description) {
  return L"Interface\\" + text_of_id(description.interface_id);
}
std::wstring library_key() { return L"TypeLib\\" + text_of_id(kLibraryId); }
std::wstring library_version_key() { return library_key() + L"\\" + kVersion; }
std::wstring library_language_key() { return library_version_key() + L"\\0"; }
std::wstring library_file_key() { return library_language_key() + L"\\" + kSystemKind; }

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

std::optional<FileIdentity> identity_of(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  BY_HANDLE_FILE_INFORMATION found = {};
  const bool known = GetFileInformationByHandle(file, &found) != FALSE;
  CloseHandle(file);
  if (!known) return {};
  return FileIdentity{found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow};
}

// Whether another file than `file` is registered at `key`. What no file holds is ours to remove, too: a removal or a
// registration that failed half-way left it behind.
bool is_another_file_at(const std::wstring& key, const std::wstring& file) {
  const auto registered = read_registry(key, L"");
  if (!registered || *registered == file) return false;
  const auto identity = identity_of(*registered);
  return !identity || identity != identity_of(file);
}

bool has_server(const ClassDescription& description) {
  return read_registry(server_key(description), L"") || read_registry(server_key(description), L"", kOtherView);
}

// Both bitnesses share the ProgID; on 32-bit Windows both views are the same. One that names another class is not ours.
LSTATUS remove_program(const ClassDescription& description) {
  const std::wstring program = description.prog_id;
  const auto named = read_registry(program + L"\\Clsid", L"");
  const bool names_another = named && *named != text_of_id(description.class_id);
  return names_another || has_server(description) ? ERROR_SUCCESS : remove_key_tree(program);
}

LSTATUS remove_class(const ClassDescription& description, const std::wstring& file) {
  if (!is_another_file_at(server_key(description), file)) {
    for (const std::wstring& key : {interface_key(description), class_key(description)}) {
      if (const LSTATUS removed = remove_key_tree(key); removed != ERROR_SUCCESS) return removed;
    }
  }
  return remove_program(description);
}

// The bitnesses share all of the library's entry but the key of the file.
LSTATUS remove_library(const std::wstring& file) {
  LSTATUS removed = ERROR_SUCCESS;
  if (!is_another_file_at(library_file_key(), file)) removed = remove_key_tree(library_file_key());
  if (removed == ERROR_SUCCESS && !has_subkeys(library_language_key()))
    removed = remove_key_tree(library_version_key());
  if (removed == ERROR_SUCCESS && !has_subkeys(library_key())) removed = remove_key_tree(library_key());
  return removed;
}

LSTATUS write_all(const std::vector<RegistryValue>& values) {
  RegistryTransaction transaction;
  for (const RegistryValue& value : values) {
    if (const LSTATUS written = transaction.write(value); written != ERROR_SUCCESS) return written;
  }
  transaction.commit();
  return ERROR_SUCCESS;
}

LSTATUS remove_all(const std::wstring& file) {
  for (const ClassDescription* description : kClasses) {
    if (const LSTATUS removed = remove_class(*description, file); removed != ERROR_SUCCESS) return removed;
  }
  return remove_library(file);
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
  return registered([] { return write_all(registration_of(module_path())); });
}

HRESULT unregister_server() noexcept {
  return registered([] { return remove_all(module_path()); });
}

}  // namespace corvelle
