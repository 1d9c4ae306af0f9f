// bench/ratio_table.h - times two ways of doing the same thing, side by side in one run.
//
// Times depend on the machine and its mood; only ratios of one run are results. The programs print a line for each
// comparison, its parts separated by tabs; scripts/bench makes tables of the lines.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <limits>

namespace corvelle::bench {

// Nanoseconds of one call, of either way.
struct Times {
  double subject;
  double peer;
};

namespace internal {

// Times calls by rounds, and keeps the best: whatever disturbs a round only makes it longer.
template <class Call>
class Rounds {
 public:
  Rounds(Call& call, double nanoseconds_a_round) : call_(call) {
    // The shortest of three, since a round that was disturbed says nothing of the calls.
    while (std::min({round(), round(), round()}) < nanoseconds_a_round) calls_ *= 2;
  }
  void run() { best_ = std::min(best_, round() / static_cast<double>(calls_)); }
  double best() const { return best_; }

 private:
  using Clock = std::chrono::steady_clock;

  double round() {
    const auto start = Clock::now();
    for (long i = 0; i < calls_; ++i) call_();
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
  }

  Call& call_;
  long calls_ = 1;
  double best_ = std::numeric_limits<double>::max();
};

}  // namespace internal

// How often a call is timed, and for how long each time: where others disturb it often, often and briefly.
struct Timing {
  int rounds = 25;
  double nanoseconds_a_round = 1e6;
};

// Keeps the compiler from dropping a value that is only made to be timed.
template <class Value>
void keep(const Value& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

// Times both in turns, so that what slows the machine down slows both.
template <class Subject, class Peer>
Times side_by_side(Subject&& subject, Peer&& peer, Timing timing = {}) {
  internal::Rounds subject_rounds(subject, timing.nanoseconds_a_round);
  internal::Rounds peer_rounds(peer, timing.nanoseconds_a_round);
  for (int round = 0; round < timing.rounds; ++round) {
    subject_rounds.run();
    peer_rounds.run();
  }
  return {subject_rounds.best(), peer_rounds.best()};
}

// Nanoseconds of one call.
template <class Call>
double nanoseconds(Call&& call) {
  const Timing timing;
  internal::Rounds rounds(call, timing.nanoseconds_a_round);
  for (int round = 0; round < timing.rounds; ++round) rounds.run();
  return rounds.best();
}

// One comparison of the row `row` of the table: what was timed, and what beside it.
inline void print_times(const char* row, const char* what, const char* peer, Times times) {
  std::printf("ratio\t%s\t%s\t%s\t%.2f\t%.2f\n", row, what, peer, times.subject, times.peer);
  std::fflush(stdout);
}

template <class Subject, class Peer>
void print_ratio(const char* row, const char* what, const char* peer_name, Subject&& subject, Peer&& peer) {
  print_times(row, what, peer_name, side_by_side(subject, peer));
}

// One place of a table of times: the operation's time for a text of `length` characters.
inline void print_time(const char* table, const char* operation, std::size_t length, double nanoseconds) {
  std::printf("time\t%s\t%s\t%zu\t%.2f\n", table, operation, length, nanoseconds);
  std::fflush(stdout);
}

}  // namespace corvelle::bench
