// base/from_heap.h - objects that are made with new, and whose new gives null where there is no memory.
#pragma once

#include <cstddef>
#include <cstdlib>

namespace corvelle {

// The base of a class whose objects are made with new: that gives null where there is no memory, and needs nothing of
// the compiler's C++ runtime.
class FromHeap {
 public:
  static void* operator new(std::size_t size) noexcept { return std::malloc(size); }
  static void operator delete(void* block) noexcept { std::free(block); }

 protected:
  ~FromHeap() = default;
};

}  // namespace corvelle
