#include "text/text_slot_windows.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/meeting.h"
#include "tests/support/result.h"
#include "tests/text/slot_threads.h"
#include "text/text_slot.h"

namespace corvelle {
namespace {

using testing::Meeting;
using testing::memory_in_use;
using testing::slot_thread;

// As a module that is unloaded and loaded again while threads that used it live on.
TEST(TextSlotsOfAModule, UnloadingFreesTheSlotsOfLivingThreads) {
  constexpr std::size_t kThreads = 4;
  constexpr int kRounds = 400;
  const std::u16string text(100000, u'中');
  Meeting step(kThreads + 1);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.push_back(slot_thread([&] {
      for (int round = 0; round < kRounds; ++round) {
        EXPECT_EQ(Get_Str(), u"") << "round " << round;
        EXPECT_FALSE(Set_Str(text));
        step.arrive_and_wait();  // the module goes and comes back
        step.arrive_and_wait();
      }
    }));
  }
  const std::size_t before = memory_in_use();
  for (int round = 0; round < kRounds; ++round) {
    step.arrive_and_wait();
    detach_text_slots();
    ASSERT_TRUE(attach_text_slots());
    step.arrive_and_wait();
  }
  for (std::thread& thread : threads) thread.join();
  const std::size_t stored = kThreads * kRounds * text.size() * sizeof(char16_t);
  EXPECT_LT(memory_in_use(), before + stored / 8) << "of the " << stored << " bytes that the threads stored";
}

TEST(TextSlotsOfAModule, ThreadsEndInAnyOrder) {
  constexpr std::size_t kThreads = 8;
  for (std::size_t first_to_end = 0; first_to_end < kThreads; ++first_to_end) {
    Meeting stored(kThreads + 1);
    std::vector<std::promise<void>> may_end(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
      threads.push_back(slot_thread([&, i] {
        EXPECT_FALSE(Set_Str(u"text"));
        stored.arrive_and_wait();
        may_end[i].get_future().wait();
      }));
    }
    stored.arrive_and_wait();
    for (std::size_t i = 0; i < kThreads; ++i) {
      const std::size_t next = (first_to_end + 3 * i) % kThreads;
      may_end[next].set_value();
      threads[next].join();
    }
  }
}

TEST(TextSlotsOfAModule, AThreadWithoutASlotEndsToo) {
  slot_thread([] {}).join();
  slot_thread([] { EXPECT_EQ(Get_Str(), u""); }).join();
}

}  // namespace
}  // namespace corvelle
