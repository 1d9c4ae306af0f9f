#include "component/runtime_leftovers.h"

#include <windows.h>

#include <utility>

namespace __gnu_cxx {

void __freeres();  // in no header; it is there for tools that look for leaks

}  // namespace __gnu_cxx

namespace corvelle {
namespace {

#ifdef __i386__
HANDLE unwinder_semaphore = nullptr;

// The unwinder's is the first: it is made when the module's frames are registered, before any constructor runs. The
// runtime closes the others itself.
HANDLE WINAPI create_semaphore(LPSECURITY_ATTRIBUTES attributes, LONG initial, LONG most, LPCWSTR /*name*/) {
  const HANDLE semaphore = CreateSemaphoreA(attributes, initial, most, nullptr);
  if (unwinder_semaphore == nullptr) unwinder_semaphore = semaphore;
  return semaphore;
}

// A host may have the compiler's shared runtime loaded. The start-up code asks for that by its name, and would register
// this module's frames there, where this module's own unwinder does not look: the first exception would end the host.
HMODULE WINAPI no_module(LPCSTR /*name*/) { return nullptr; }
#endif

}  // namespace

#ifdef __i386__
// Stand in for the imports that the runtime reaches the system's functions by.
extern "C" const decltype(&create_semaphore) imported_create_semaphore __asm__("__imp__CreateSemaphoreW@16");
const decltype(&create_semaphore) imported_create_semaphore = &create_semaphore;
extern "C" const decltype(&no_module) imported_get_module_handle __asm__("__imp__GetModuleHandleA@4");
const decltype(&no_module) imported_get_module_handle = &no_module;
#endif

void release_runtime_leftovers() noexcept {
  __gnu_cxx::__freeres();
#ifdef __i386__
  if (unwinder_semaphore != nullptr) CloseHandle(std::exchange(unwinder_semaphore, nullptr));
#endif
}

}  // namespace corvelle
