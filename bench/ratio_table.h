// bench/ratio_table.h - times two ways of doing the same thing, side by side in one run, and prints their ratio.
//
// For the Windows programs, which run under Wine without a benchmark library. Times depend on the machine and its
// mood; only ratios of one run are printed as results.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

namespace corvelle::bench {

// Nanoseconds of one call, the best of several rounds: whatever disturbs a round only makes it longer.
template <class Call>
double nanoseconds(Call&& call) {
  using Clock = std::chrono::steady_clock;
  constexpr int kRounds = 15;
  constexpr double kRoundNanoseconds = 2e6;
  long calls = 1;
  double best = std::numeric_limits<double>::max();
  for (int round = 0; round < kRounds;) {
    const auto start = Clock::now();
    for (long i = 0; i < calls; ++i) call();
    const double spent = std::chrono::duration<double, std::nano>(Clock::now() - start).count();
    if (spent < kRoundNanoseconds) {
      calls *= 2;
      continue;
    }
    best = std::min(best, spent / static_cast<double>(calls));
    ++round;
  }
  return best;
}

// Keeps the compiler from dropping a value that is only made to be timed.
template <class Value>
void keep(const Value& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

// One row: what was timed, against what, and the ratio of their times; above 1 means the subject is slower.
template <class Subject, class Peer>
void print_ratio(const char* subject_name, const char* peer_name, Subject&& subject, Peer&& peer) {
  const double subject_time = nanoseconds(subject);
  const double peer_time = nanoseconds(peer);
  std::printf("| %s | %s | %.1f | %.1f | %.2f |\n", subject_name, peer_name, subject_time, peer_time,
              subject_time / peer_time);
}

inline void print_head() {
  std::puts("| what | against | ns | ns of the peer | ratio |");
  std::puts("|---|---|---|---|---|");
}

}  // namespace corvelle::bench
