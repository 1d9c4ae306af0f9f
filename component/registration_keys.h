// component/registration_keys.h - where in the registry the component's entries are, below a ClassesRoot.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <initializer_list>
#include <string_view>

#include "base/short_text.h"
#include "component/class_description.h"

namespace corvelle {

// A key's path, or an id as the registry has it. The component's own fit.
using KeyPath = ShortText<255, wchar_t>;

inline constexpr std::wstring_view kVersion = L"1.0";  // of the classes and the type library
#ifdef _WIN64
inline constexpr std::wstring_view kSystemKind = L"win64";
#else
inline constexpr std::wstring_view kSystemKind = L"win32";
#endif

// A key below others: key_path({L"CLSID", L"{…}"}) is L"CLSID\\{…}".
inline KeyPath key_path(std::initializer_list<std::wstring_view> levels) {
  KeyPath path;
  for (const std::wstring_view level : levels) {
    if (path.c_str()[0] != L'\0') path.append(L"\\");
    path.append(level);
  }
  return path;
}

// "{…}", as the registry has it.
inline KeyPath text_of_id(const GUID& id) {
  wchar_t text[39] = {};  // 38 characters and the terminator
  StringFromGUID2(id, text, 39);
  return KeyPath().append(text);
}

inline KeyPath class_key(const ClassDescription& description) {
  return key_path({L"CLSID", text_of_id(description.class_id)});
}
inline KeyPath server_key(const ClassDescription& description) {
  return key_path({class_key(description), L"InprocServer32"});
}
inline KeyPath interface_key(const ClassDescription& description) {
  return key_path({L"Interface", text_of_id(description.interface_id)});
}
inline KeyPath library_key() { return key_path({L"TypeLib", text_of_id(kLibraryId)}); }
inline KeyPath library_version_key() { return key_path({library_key(), kVersion}); }
inline KeyPath library_language_key() { return key_path({library_version_key(), L"0"}); }
inline KeyPath library_file_key(std::wstring_view system_kind = kSystemKind) {
  return key_path({library_language_key(), system_kind});
}

}  // namespace corvelle
