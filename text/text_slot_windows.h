// text/text_slot_windows.h - the text slots' life in a Windows module: what its DllMain has to call.
//
// The slots hang on a TLS index of the module's own instead of a thread_local object: a destructor of one would still
// be called when its thread ends, even after the DLL that holds its code was unloaded.
#pragma once

namespace corvelle {

// Makes ready for slots, before any is used; for DLL_PROCESS_ATTACH. False where the system has no TLS index left: the
// module cannot be loaded then. The module must go on receiving thread notifications (no DisableThreadLibraryCalls).
bool attach_text_slots() noexcept;

// Frees the calling thread's slot, if it has one; for DLL_THREAD_DETACH.
void detach_thread_text_slot() noexcept;

// Frees the slots of all threads, those still alive too, and gives the TLS index back; for a DLL_PROCESS_DETACH that
// unloads the module. No thread may be inside an operation, nor call one before the next attach_text_slots. At the end
// of the process leave it out: other threads were stopped wherever they were, the lock perhaps taken, and the system
// takes all memory back anyway.
void detach_text_slots() noexcept;

}  // namespace corvelle
