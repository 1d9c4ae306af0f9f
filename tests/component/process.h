// tests/component/process.h - this process as the system sees it: what it holds, and whether the component is in it.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <psapi.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvelle::testing {

inline HMODULE loaded_component() { return GetModuleHandleW(L"Corvelle.dll"); }

template <class Function>
Function exported(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(loaded_component(), name)));
}

// What the loaded component answers COM.
inline HRESULT can_unload() { return exported<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")(); }

// Has COM unload the component if nothing of it is in use; true if it is gone. The first call marks the library, the
// next one that finds it still unused lets it go.
inline bool unload_component() {
  CoFreeUnusedLibrariesEx(0, 0);
  CoFreeUnusedLibrariesEx(0, 0);
  return loaded_component() == nullptr;
}

// The bytes that this process has committed. (Wine leaves PrivateUsage, which is the same, at 0.)
inline std::size_t private_bytes() {
  PROCESS_MEMORY_COUNTERS counters = {};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
  return counters.PagefileUsage;
}

// The handles that this process has open. Wine, which does not count them, gives the lowest free numbers out first: the
// highest of a handful of new ones tells about as much.
inline std::size_t open_handles() {
  DWORD count = 0;
  if (GetProcessHandleCount(GetCurrentProcess(), &count) != FALSE && count != 0) return count;
  std::size_t highest = 0;
  std::array<HANDLE, 32> handles = {};
  for (HANDLE& handle : handles) {
    handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    highest = std::max(highest, reinterpret_cast<std::size_t>(handle) / 4);
  }
  for (HANDLE handle : handles) CloseHandle(handle);
  return highest;
}

}  // namespace corvelle::testing
