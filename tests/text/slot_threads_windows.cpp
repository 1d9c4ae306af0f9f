#include <windows.h>

#include <gtest/gtest.h>
#include <psapi.h>

#include <utility>

#include "tests/text/slot_threads.h"
#include "text/text_slot_windows.h"

namespace corvelle::testing {
namespace {

// A test program has no DllMain that the system would call.
class TextSlots : public ::testing::Environment {
 public:
  void SetUp() override { ASSERT_TRUE(attach_text_slots()); }
  void TearDown() override { detach_text_slots(); }
};
const auto* const kTextSlots = ::testing::AddGlobalTestEnvironment(new TextSlots);

}  // namespace

std::thread slot_thread(std::function<void()> body) {
  return std::thread([body = std::move(body)] {
    body();
    detach_thread_text_slot();
  });
}

std::size_t memory_in_use() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
  return counters.PagefileUsage;
}

}  // namespace corvelle::testing
