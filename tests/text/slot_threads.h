// tests/text/slot_threads.h - threads that use the text slot and end, as they do around the component.
#pragma once

#include <cstddef>
#include <functional>
#include <thread>

namespace corvelle::testing {

// A thread that runs `body` and then gives its slot back, as the module's thread notification has it do.
std::thread slot_thread(std::function<void()> body);

// The memory that this process holds, in bytes.
std::size_t memory_in_use();

}  // namespace corvelle::testing
