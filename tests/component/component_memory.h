// tests/component/component_memory.h - what the loaded component allocates: counted, and made to fail.
#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>

namespace corvelle::testing {

// Stands between the DLL and the memory that it asks for, from its construction on: the DLL's heap, its texts, its
// error information, and what automation allocates for it. One at a time; the DLL must be loaded while it lives.
//   ComponentMemory memory;
//   memory.fail_allocation(3);  // the fourth from now fails
class ComponentMemory {
 public:
  ComponentMemory();
  ~ComponentMemory();
  ComponentMemory(const ComponentMemory&) = delete;
  ComponentMemory& operator=(const ComponentMemory&) = delete;

  // How many blocks of the DLL's heap and of automation's texts are in use that were allocated in this object's time,
  // whoever has them now.
  std::size_t blocks_in_use() const;

  // How many blocks and texts the DLL has asked for so far. A text cut where it stands is none.
  int allocations() const;

  // Makes one allocation fail, the one with that number, counted from 0; or that one and every later one.
  void fail_allocation(int number);
  void fail_from_allocation(int number);
  // No more failures; true where one has struck since it was asked for.
  bool stop_failing();

 private:
  class Replacements;
  std::unique_ptr<Replacements> replacements_;
};

}  // namespace corvelle::testing
