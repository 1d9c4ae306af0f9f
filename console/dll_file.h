// console/dll_file.h - a registered DLL as a file, of whatever bitness it is.
#pragma once

#include <windows.h>

#include <string>

#include "console/examination.h"

namespace corvelle::console {

// The path by which this program reaches a file that programs of `bitness` know as `path`: 64-bit Windows has a system
// folder for each bitness and shows each program its own by the same name.
std::wstring as_seen_from_here(const std::wstring& path, Bitness bitness);

// Whether a file or folder of that name is there.
bool exists(const std::wstring& path);

// Whether the file is a DLL, and of which bitness.
std::optional<Bitness> bitness_of(const std::wstring& path);

// Whether both files have the same content.
bool same_content(const std::wstring& left, const std::wstring& right);

// Whether the type library within the file can be read and describes both interfaces.
bool has_type_library(const std::wstring& path);

}  // namespace corvelle::console
