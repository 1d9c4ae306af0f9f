#include "component/registration.h"

#include <optional>
#include <string_view>

#include "base/slice.h"
#include "base/wide_windows.h"
#include "component/boundary.h"
#include "component/class_description.h"
#include "component/module.h"
#include "component/registration_keys.h"
#include "component/registry.h"

namespace corvelle {
namespace {

constexpr std::wstring_view kTypeLibraryMarshaller = L"{00020424-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr REGSAM kOtherView = KEY_WOW64_32KEY;
#else
constexpr REGSAM kOtherView = KEY_WOW64_64KEY;
#endif

// What is registered, and where.
struct Target {
  ClassesRoot root;
  const Text& file;
};

std::wstring_view wide_view(const Text& text) { return {as_wide(text), text.size()}; }

void write_class(RegistryTransaction& registry, const ClassDescription& description, const Text& file) {
  const std::wstring_view program = description.prog_id;
  const KeyPath key = class_key(description);
  registry.write(program, L"", program);
  registry.write(key_path({program, L"Clsid"}), L"", text_of_id(description.class_id));
  registry.write(key, L"", program);
  registry.write(server_key(description), L"", wide_view(file));
  registry.write(server_key(description), L"ThreadingModel", L"Apartment");
  registry.write(key_path({key, L"ProgID"}), L"", program);
  registry.write(key_path({key, L"VERSION"}), L"", kVersion);
  registry.write(key_path({key, L"TypeLib"}), L"", text_of_id(kLibraryId));
}

void write_interface(RegistryTransaction& registry, const ClassDescription& description) {
  const KeyPath key = interface_key(description);
  registry.write(key, L"", description.interface_name);
  registry.write(key_path({key, L"ProxyStubClsid32"}), L"", kTypeLibraryMarshaller);
  registry.write(key_path({key, L"TypeLib"}), L"", text_of_id(kLibraryId));
  registry.write(key_path({key, L"TypeLib"}), L"Version", kVersion);
}

void write_library(RegistryTransaction& registry, const Text& file, const Text& folder) {
  const KeyPath key = library_version_key();
  registry.write(key, L"", kLibraryName);
  registry.write(library_file_key(), L"", wide_view(file));
  registry.write(key_path({key, L"FLAGS"}), L"", L"0");
  registry.write(key_path({key, L"HELPDIR"}), L"", wide_view(folder));
}

// What tells a file from every other, however its path is written: short names, links, the system's own aliases.
struct FileIdentity {
  DWORD volume = 0;
  DWORD index_high = 0;
  DWORD index_low = 0;
  bool operator==(const FileIdentity&) const = default;
};

// Where anyone may write the path, it may name a pipe, whose other end must not act in this program's name.
std::optional<FileIdentity> identity_of(const Text& path) {
  const HANDLE file = CreateFileW(as_wide(path), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
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
LSTATUS find_another_file_at(std::wstring_view key, const Target& target, bool* another) {
  *another = false;
  Text registered;
  const LSTATUS read = read_registry(target.root, key, L"", 0, &registered);
  if (read != ERROR_SUCCESS || registered == target.file) return read == ERROR_OUTOFMEMORY ? read : ERROR_SUCCESS;
  const auto identity = identity_of(registered);
  *another = !identity || identity != identity_of(target.file);
  return ERROR_SUCCESS;
}

// ERROR_FILE_NOT_FOUND where neither bitness has one.
LSTATUS find_server(const ClassesRoot& root, const ClassDescription& description) {
  Text file;
  const LSTATUS read = read_registry(root, server_key(description), L"", 0, &file);
  return read == ERROR_SUCCESS || read == ERROR_OUTOFMEMORY
             ? read
             : read_registry(root, server_key(description), L"", kOtherView, &file);
}

// Both bitnesses share the ProgID; on 32-bit Windows both views are the same. One that names another class is not ours.
LSTATUS remove_program(const ClassesRoot& root, const ClassDescription& description) {
  const std::wstring_view program = description.prog_id;
  Text named;
  const LSTATUS read = read_registry(root, key_path({program, L"Clsid"}), L"", 0, &named);
  if (read == ERROR_OUTOFMEMORY) return read;
  if (read == ERROR_SUCCESS && wide_view(named) != std::wstring_view(text_of_id(description.class_id))) return read;
  const LSTATUS found = find_server(root, description);
  return found == ERROR_SUCCESS || found == ERROR_OUTOFMEMORY ? found : remove_key_tree(root, program);
}

LSTATUS remove_class(const ClassDescription& description, const Target& target) {
  bool another = false;
  LSTATUS status = find_another_file_at(server_key(description), target, &another);
  if (status == ERROR_SUCCESS && !another) status = remove_key_tree(target.root, interface_key(description));
  if (status == ERROR_SUCCESS && !another) status = remove_key_tree(target.root, class_key(description));
  return status == ERROR_SUCCESS ? remove_program(target.root, description) : status;
}

// The bitnesses share all of the library's entry but the key of the file.
LSTATUS remove_library(const Target& target) {
  const ClassesRoot& root = target.root;
  bool another = false;
  LSTATUS status = find_another_file_at(library_file_key(), target, &another);
  if (status == ERROR_SUCCESS && !another) status = remove_key_tree(root, library_file_key());
  if (status == ERROR_SUCCESS && !has_subkeys(root, library_language_key())) {
    status = remove_key_tree(root, library_version_key());
  }
  if (status == ERROR_SUCCESS && !has_subkeys(root, library_key())) status = remove_key_tree(root, library_key());
  return status;
}

LSTATUS write_all(const Target& target) {
  const Text folder(first_of(target.file, target.file.view().rfind(u'\\')));
  if (folder.failed()) return ERROR_OUTOFMEMORY;
  RegistryTransaction registry(target.root);
  for (const ClassDescription* description : kClasses) {
    write_class(registry, *description, target.file);
    write_interface(registry, *description);
  }
  write_library(registry, target.file, folder);
  if (registry.status() == ERROR_SUCCESS) registry.commit();
  return registry.status();
}

LSTATUS remove_all(const Target& target) {
  for (const ClassDescription* description : kClasses) {
    if (const LSTATUS removed = remove_class(*description, target); removed != ERROR_SUCCESS) return removed;
  }
  return remove_library(target);
}

using Step = LSTATUS(const Target& target);

// Runs a step for `file`, which may have failed for want of memory.
HRESULT registered(Step& step, const ClassesRoot& root, const Text& file) noexcept {
  forget_error();
  const LSTATUS status = file.failed() ? ERROR_OUTOFMEMORY : step({.root = root, .file = file});
  return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

}  // namespace

HRESULT register_server() noexcept { return registered(write_all, kMachineClasses, module_path()); }

HRESULT unregister_server() noexcept { return registered(remove_all, kMachineClasses, module_path()); }

HRESULT register_for_user(const wchar_t* file) noexcept {
  return registered(write_all, kUserClasses, Text(as_text(file)));
}

HRESULT unregister_for_user(const wchar_t* file) noexcept {
  return registered(remove_all, kUserClasses, Text(as_text(file)));
}

}  // namespace corvelle
