#include <unistd.h>

#include <fstream>
#include <utility>

#include "tests/text/slot_threads.h"

namespace corvelle::testing {

std::thread slot_thread(std::function<void()> body) { return std::thread(std::move(body)); }

std::size_t memory_in_use() {
  std::ifstream statm("/proc/self/statm");
  std::size_t total_pages = 0;
  std::size_t resident_pages = 0;
  statm >> total_pages >> resident_pages;
  return resident_pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace corvelle::testing
