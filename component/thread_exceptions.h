// component/thread_exceptions.h - the C++ runtime's note of each thread's exceptions, kept without an allocation.
//
// The runtime's own version allocates a thread's note at its first exception, and ends the process where that fails:
// when memory has run out and an exception is to say so. The functions that it reads the note by, __cxa_get_globals and
// __cxa_get_globals_fast, are therefore this module's own.
#pragma once

namespace corvelle {

// Makes ready for exceptions; for DLL_PROCESS_ATTACH. False where the system has no TLS index left.
bool attach_thread_exceptions() noexcept;

// Gives the calling thread's note back, if it has one; for DLL_THREAD_DETACH.
void detach_thread_exceptions() noexcept;

// Gives the TLS index back; for a DLL_PROCESS_DETACH that unloads the module.
void detach_all_thread_exceptions() noexcept;

}  // namespace corvelle
