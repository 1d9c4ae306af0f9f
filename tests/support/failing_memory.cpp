#include "tests/support/failing_memory.h"

#include <cstdlib>

namespace {

// What the FailingMemory of this thread knows.
thread_local bool watched = false;
thread_local std::size_t failing_allocation = 0;
thread_local std::size_t allocations_made = 0;
thread_local long blocks = 0;

bool fails() { return watched && ++allocations_made == failing_allocation; }

void* counted(void* block) {
  if (watched && block != nullptr) ++blocks;
  return block;
}

}  // namespace

// The linker leads the calls here (--wrap), and those of the __real functions to the library.
// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp): the linker's own names
extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size) { return fails() ? nullptr : counted(__real_malloc(size)); }
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return fails() ? nullptr : counted(__real_calloc(count, size));
}
void* __wrap_realloc(void* block, std::size_t size) {
  if (fails()) return nullptr;
  void* const moved = __real_realloc(block, size);
  return block == nullptr ? counted(moved) : moved;
}
void __wrap_free(void* block) {
  if (watched && block != nullptr) --blocks;
  __real_free(block);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)

namespace corvelle::testing {

FailingMemory::FailingMemory(std::size_t failing) {
  failing_allocation = failing;
  allocations_made = 0;
  blocks = 0;
  watched = true;
}

FailingMemory::~FailingMemory() { watched = false; }

std::size_t FailingMemory::allocations() { return allocations_made; }

long FailingMemory::blocks_left() { return blocks; }

}  // namespace corvelle::testing
