// tests/component/surroundings.h - where the component runs in a test: loaded by the system, or linked to the program.
#pragma once

#include <windows.h>

#include "tests/component/host.h"

#ifdef _WIN32
#include "tests/component/component_memory.h"
#include "tests/component/process.h"
#else
#include "component/module.h"
#endif

namespace corvelle::testing {

#ifdef _WIN32

// An apartment with the component loaded and its memory watched.
class Surroundings {
 public:
  // Whether the component keeps COM from unloading it.
  bool component_in_use() const { return can_unload_now_() == S_FALSE; }
  // Has COM unload what is not in use. The component stays where it is all the same.
  void free_unused_libraries() const { CoFreeUnusedLibraries(); }
  // How many blocks the component has, or has handed out, that nobody has given back.
  std::size_t blocks_in_use() const { return memory_.blocks_in_use(); }

 private:
  static HMODULE loaded_to_stay() {
    const auto object = create(L"Corvelle.ClsValidate");
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(loaded_component(), path, MAX_PATH);
    return LoadLibraryW(path);
  }

  Apartment apartment_;
  HMODULE component_ = loaded_to_stay();
  HRESULT(STDAPICALLTYPE* can_unload_now_)() = exported<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow");
  ComponentMemory memory_;
};

#else

// The component is part of the program, whose memory the sanitizers watch.
class Surroundings {
 public:
  bool component_in_use() const { return module_in_use(); }
  void free_unused_libraries() const {}
  std::size_t blocks_in_use() const { return 0; }

 private:
  Apartment apartment_;
};

#endif

}  // namespace corvelle::testing
