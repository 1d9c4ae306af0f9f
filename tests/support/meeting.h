// tests/support/meeting.h - where threads of a test wait for each other.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace corvelle::testing {

// A place where so many threads meet, again and again: each waits until all have come. GCC 12's std::barrier, and the
// std::atomic waits beneath it, lose wake-ups in Windows programs and then wait for good.
class Meeting {
 public:
  explicit Meeting(std::size_t threads) : threads_(threads) {}
  Meeting(const Meeting&) = delete;
  Meeting& operator=(const Meeting&) = delete;

  void arrive_and_wait() {
    std::unique_lock lock(mutex_);
    const std::size_t round = round_;
    if (++arrived_ == threads_) {
      arrived_ = 0;
      ++round_;
      all_arrived_.notify_all();
    } else {
      all_arrived_.wait(lock, [&] { return round_ != round; });
    }
  }

 private:
  std::size_t threads_;
  std::size_t arrived_ = 0;
  std::size_t round_ = 0;
  std::mutex mutex_;
  std::condition_variable all_arrived_;
};

}  // namespace corvelle::testing
