// component/registration_keys.h - where in the registry the component's entries are, below a ClassesRoot.
#pragma once

#include <windows.h>

#include <objbase.h>

#include <string>

#include "component/class_description.h"

namespace corvelle {

inline constexpr wchar_t kVersion[] = L"1.0";  // of the classes and the type library
#ifdef _WIN64
inline constexpr wchar_t kSystemKind[] = L"win64";
#else
inline constexpr wchar_t kSystemKind[] = L"win32";
#endif

// "{…}", as the registry has it.
inline std::wstring text_of_id(const GUID& id) {
  wchar_t text[39] = {};  // 38 characters and the terminator
  StringFromGUID2(id, text, 39);
  return text;
}

inline std::wstring class_key(const ClassDescription& description) {
  return L"CLSID\\" + text_of_id(description.class_id);
}
inline std::wstring server_key(const ClassDescription& description) {
  return class_key(description) + L"\\InprocServer32";
}
inline std::wstring interface_key(const ClassDescription& description) {
  return L"Interface\\" + text_of_id(description.interface_id);
}
inline std::wstring library_key() { return L"TypeLib\\" + text_of_id(kLibraryId); }
inline std::wstring library_version_key() { return library_key() + L"\\" + kVersion; }
inline std::wstring library_language_key() { return library_version_key() + L"\\0"; }
inline std::wstring library_file_key(const std::wstring& system_kind = kSystemKind) {
  return library_language_key() + L"\\" + system_kind;
}

}  // namespace corvelle
