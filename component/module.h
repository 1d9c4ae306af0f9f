// component/module.h - what keeps the DLL loaded, and where it is.
#pragma once

#include <windows.h>

#include "base/text.h"

namespace corvelle {

// Keeps the DLL loaded while it lives; every object and every class factory holds one.
class ModuleReference {
 public:
  ModuleReference() noexcept;
  ~ModuleReference();
  ModuleReference(const ModuleReference&) = delete;
  ModuleReference& operator=(const ModuleReference&) = delete;
};

// IClassFactory::LockServer: counts locks beside the references. One that is taken back once too often changes nothing.
void lock_module(bool lock) noexcept;

// Whether any object, class factory or lock is outstanding.
bool module_in_use() noexcept;

// The DLL's own handle.
HMODULE module_handle() noexcept;

// The DLL's full path, whatever its length and characters; failed where there is no memory for it.
Text module_path() noexcept;

}  // namespace corvelle
