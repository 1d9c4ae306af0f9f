// console/place.h - where the tool is, which is where its DLL is.
#pragma once

#include <string>

#include "component/module.h"

namespace corvelle::console {

// The folder of a path, with its last backslash.
inline std::wstring folder_of(const std::wstring& path) { return path.substr(0, path.rfind(L'\\') + 1); }

// The file of that name beside this program.
inline std::wstring beside_this_program(const std::wstring& name) { return folder_of(module_path()) + name; }

}  // namespace corvelle::console
