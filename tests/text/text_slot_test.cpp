#include "text/text_slot.h"

#include <string>
#include <vector>

#include "tests/cases/text_slot_cases.h"
#include "tests/support/meeting.h"
#include "tests/support/result.h"
#include "tests/text/slot_threads.h"

namespace corvelle {
namespace {

using testing::Meeting;
using testing::native;
using testing::slot_thread;
using testing::value_of;

TEST(TextSlot, NativeCases) {
  Result<Text> (*const get_str)() = &Get_Str;
  testing::run_natively(testing::text_slot_cases(),
                        {{u"ClsVexApp.Set_Str", native(&Set_Str)}, {u"ClsVexApp.Get_Str", native(get_str)}});
}

TEST(TextSlot, IsEmptyOnEveryNewThread) {
  EXPECT_FALSE(Set_Str(u"of the first thread"));
  slot_thread([] { EXPECT_EQ(Get_Str(), u""); }).join();
  EXPECT_EQ(Get_Str(), u"of the first thread");
}

TEST(TextSlot, WhatWasReadIsACopy) {
  EXPECT_FALSE(Set_Str(u"before"));
  const Text read = value_of(Get_Str());
  EXPECT_FALSE(Set_Str(u"after"));
  EXPECT_EQ(read, u"before");
}

TEST(TextSlot, StoresWhatItHolds) {
  EXPECT_FALSE(Set_Str(u"the same"));
  EXPECT_FALSE(Set_Str(value_of(Get_Str())));
  EXPECT_EQ(Get_Str(), u"the same");
}

TEST(TextSlot, ThreadsNeverSeeEachOthersText) {
  constexpr std::size_t kThreads = 16;
  Meeting all_stored(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < kThreads; ++number) {
    threads.push_back(slot_thread([number, &all_stored] {
      const std::u16string own(100 + number, static_cast<char16_t>(u'a' + number));
      EXPECT_FALSE(Set_Str(own));
      all_stored.arrive_and_wait();
      for (int round = 0; round < 1000; ++round) {
        ASSERT_EQ(Get_Str(), own);
        EXPECT_FALSE(Set_Str(own));
      }
    }));
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(TextSlot, ThreadsThatEndedLeaveNothingBehind) {
  constexpr std::size_t kThreads = 3000;
  const std::u16string text(16384, u'中');
  const std::size_t before = testing::memory_in_use();
  for (std::size_t i = 0; i < kThreads; ++i) {
    slot_thread([&] { EXPECT_FALSE(Set_Str(text)); }).join();
  }
  const std::size_t after = testing::memory_in_use();
  const std::size_t stored = kThreads * text.size() * sizeof(char16_t);
  EXPECT_LT(after, before + stored / 8) << "of the " << stored << " bytes that the threads stored";
}

}  // namespace
}  // namespace corvelle
