// tests/contract/contract_text.h - what the built DLL promises its hosts, as text.
#pragma once

#include <string>

namespace corvelle::testing {

// Each gives the lines of one section of the contract, each line ended by "\n", in UTF-8.

// Identifiers, classes, interfaces and operations, from the type library that `dll` embeds. The host's data access
// library, or a stub of it, must be registered.
std::string type_library_text(const std::wstring& dll);

// The strings and numbers of the version resource.
std::string version_text(const std::wstring& dll);

// The exported names.
std::string export_text(const std::wstring& dll);

// Loader flags and imported functions: what differs between the bitnesses.
std::string image_text(const std::wstring& dll);

// What DllRegisterServer writes among the machine's classes and DllUnregisterServer leaves. The DLL's path shows as
// <dll>, its folder as <folder>, the key of its bitness as <system>.
std::string registration_text(const std::wstring& dll);

std::string utf8(const std::wstring& text);
std::string quoted(const std::wstring& text);

}  // namespace corvelle::testing
