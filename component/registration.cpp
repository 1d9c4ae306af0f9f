#include "component/registration.h"

#include <objbase.h>

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

bool is_file_at(const std::wstring& key, const std::wstring& file) {
  const auto registered = read_registry(key, L"");
  return registered &&
         CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, registered->c_str(), -1, file.c_str(), -1) == CSTR_EQUAL;
}

LSTATUS remove_class(const ClassDescription& description, const std::wstring& file) {
  if (!is_file_at(server_key(description), file)) return ERROR_SUCCESS;
  std::vector<std::wstring> keys = {interface_key(description)};
  if (!read_registry(server_key(description), L"", kOtherView)) keys.emplace_back(description.prog_id);
  keys.push_back(class_key(description));  // last: while it stands, the removal can be repeated
  for (const std::wstring& key : keys) {
    if (const LSTATUS removed = remove_key_tree(key); removed != ERROR_SUCCESS) return removed;
  }
  return ERROR_SUCCESS;
}

LSTATUS remove_library(const std::wstring& file) {
  if (!is_file_at(library_file_key(), file)) return ERROR_SUCCESS;
  LSTATUS removed = remove_key_tree(library_file_key());
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
