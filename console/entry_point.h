// console/entry_point.h - a function of a loaded module, by its name.
#pragma once

#include <windows.h>

namespace corvelle::console {

// Null where the module has none of that name.
template <class Function>
Function entry_point(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace corvelle::console
