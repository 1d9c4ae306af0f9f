// console/place.h - where the tool is, which is where its DLL is.
#pragma once

#include <string>

#include "base/wide_windows.h"
#include "component/module.h"

namespace corvelle::console {

// The folder of a path, with its last backslash.
inline std::wstring folder_of(const std::wstring& path) { return path.substr(0, path.rfind(L'\\') + 1); }

// This program's own file.
inline std::wstring own_path() { return as_wide(module_path()); }

// The file of that name beside this program.
inline std::wstring beside_this_program(const std::wstring& name) { return folder_of(own_path()) + name; }

}  // namespace corvelle::console
