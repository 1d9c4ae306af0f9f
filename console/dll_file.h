// console/dll_file.h - a registered DLL as a file, of whatever bitness it is.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "console/examination.h"

namespace corvelle::console {

// The path by which this program reaches a file that programs of `bitness` know as `path`: 64-bit Windows has a system
// folder for each bitness and shows each program its own by the same name.
std::wstring as_seen_from_here(const std::wstring& path, Bitness bitness);

// Whether the file is a DLL, and of which bitness, by its headers alone.
std::optional<Bitness> bitness_of(const std::wstring& path);

}  // namespace corvelle::console
