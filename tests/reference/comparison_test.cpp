// Holds every operation against its model on generated arguments.
//
//   CORVELLE_COMPARISONS   how many for each operation (default: 200,000; for Windows 50,000, under a sanitizer 20,000)
//   CORVELLE_SEED          the seed of the arguments (default: 936)
#include "tests/reference/comparison.h"

#include <gtest/gtest.h>

#include <map>
#include <thread>
#include <vector>

namespace corvelle::testing {
namespace {

constexpr int kShownDifferences = 3;
constexpr std::uint64_t kTelling = 200'000;  // from here on, every outcome of an operation is met
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::uint64_t kUsual = kTelling / 10;  // each costs ten times as much
#elif defined(_WIN32)
constexpr std::uint64_t kUsual = kTelling / 4;  // the first of those that are made natively
#else
constexpr std::uint64_t kUsual = kTelling;
#endif

class Comparing : public ::testing::TestWithParam<ComparedOperation> {};

TEST_P(Comparing, FindsNoDifference) {
  const std::uint64_t comparisons = number_from_environment("CORVELLE_COMPARISONS", kUsual);
  const std::uint64_t seed = number_from_environment("CORVELLE_SEED", 936);
  RandomChoices choices(seed);
  std::uint64_t made = 0;
  int differences = 0;
  std::map<int, std::uint64_t> outcomes;  // how many ended in each error, under 0 in a value
  while (made < comparisons && differences < kShownDifferences) {
    const Comparison comparison = GetParam().compare(choices);
    ++made;
    ++outcomes[comparison.error];
    if (comparison.difference.empty()) continue;
    ++differences;
    ADD_FAILURE() << "comparison " << made << " of seed " << seed << "\n" << comparison.difference;
  }
  EXPECT_EQ(made, comparisons);
  if (comparisons < kTelling) return;
  EXPECT_GT(outcomes[0], comparisons / 2) << "most arguments should lead to a value";
  for (const int error : GetParam().errors) EXPECT_GT(outcomes[error], 0) << "no arguments led to error " << error;
  EXPECT_EQ(outcomes.size(), 1 + GetParam().errors.size()) << "an error that the operation is not known for";
}

std::vector<ComparedOperation> all_operations() {
  std::vector<ComparedOperation> all;
  for (const OperationGroup& group : operation_groups()) {
    all.insert(all.end(), group.operations.begin(), group.operations.end());
  }
  return all;
}

// Calls on different threads share nothing; under ThreadSanitizer this says so.
TEST(SideBySide, EveryOperationFindsNoDifference) {
  std::vector<std::thread> threads;
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    threads.emplace_back([seed] {
      RandomChoices choices(seed);
      for (const ComparedOperation& operation : all_operations()) {
        for (int i = 0; i < 300; ++i) EXPECT_EQ(operation.compare(choices).difference, "");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

INSTANTIATE_TEST_SUITE_P(Every, Comparing, ::testing::ValuesIn(all_operations()),
                         [](const auto& operation) { return operation.param.name; });

}  // namespace
}  // namespace corvelle::testing
