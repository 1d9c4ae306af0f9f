// component/runtime_leftovers.h - what the C++ runtime would leave in the process each time the module is unloaded, and
// what it would take from another runtime there.
#pragma once

namespace corvelle {

// Gives back the runtime's memory for exceptions when there is no other, 70 KB, and in 32 bits the semaphore of its
// unwinder; for a DLL_PROCESS_DETACH that unloads the module. Nothing may be thrown any more.
void release_runtime_leftovers() noexcept;

}  // namespace corvelle
