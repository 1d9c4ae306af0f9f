// What the compiler's stack protector asks a program for, on Windows: the value that stands between a function's arrays
// and its return address, and what happens where it no longer does. The compiler's own library would ask a
// cryptographic provider for the value, which loads further libraries while this one is being loaded, and would open
// the console to say what happened.
#include <windows.h>

#include <cstdint>
#include <initializer_list>

namespace corvelle {
namespace {

// A value that nobody can know beforehand, as the system's own compiler makes it: of times, numbers of this process and
// places that differ from run to run.
std::uintptr_t unforeseeable() {
  FILETIME time = {};
  GetSystemTimeAsFileTime(&time);
  LARGE_INTEGER counter = {};
  QueryPerformanceCounter(&counter);
  std::uint64_t mixed = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
  for (const std::uint64_t part : {static_cast<std::uint64_t>(counter.QuadPart), std::uint64_t{GetCurrentProcessId()},
                                   std::uint64_t{GetCurrentThreadId()}, std::uint64_t{GetTickCount()},
                                   static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&time)),
                                   static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&unforeseeable))}) {
    mixed = (mixed ^ part) * 0x9E3779B97F4A7C15;
    mixed ^= mixed >> 29;
  }
  return static_cast<std::uintptr_t>(mixed ^ (mixed >> 32));
}

}  // namespace
}  // namespace corvelle

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the compiler's own
extern "C" {

std::uintptr_t __stack_chk_guard = 0;

// Before all other initialisation, and in a function that returns by nothing that is guarded.
[[gnu::constructor(101), gnu::no_stack_protector]] void set_stack_guard() {
  __stack_chk_guard = corvelle::unforeseeable();
}

// Nothing can be trusted any more, the error handling of this module and its host included.
[[noreturn]] void __stack_chk_fail() {
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_STACK_BUFFER_OVERRUN));
  __builtin_trap();
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
