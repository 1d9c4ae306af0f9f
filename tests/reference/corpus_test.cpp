// Replays the fuzzers' committed inputs, CORVELLE_CORPUS/GROUP/*, through the same comparison.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/reference/comparison.h"

namespace corvelle::testing {
namespace {

namespace fs = std::filesystem;

class Corpus : public ::testing::TestWithParam<OperationGroup> {};

std::vector<std::uint8_t> bytes_of(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  EXPECT_TRUE(stream) << file;
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST_P(Corpus, HoldsNoDifference) {
  int replayed = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(CORVELLE_CORPUS) / GetParam().name)) {
    const std::optional<std::string> difference = difference_in(GetParam(), bytes_of(entry.path()));
    EXPECT_FALSE(difference.has_value()) << entry.path().filename() << "\n" << difference.value_or("");
    ++replayed;
  }
  EXPECT_GT(replayed, 0) << "nothing was replayed";
}

INSTANTIATE_TEST_SUITE_P(Every, Corpus, ::testing::ValuesIn(operation_groups()),
                         [](const auto& group) { return group.param.name; });

}  // namespace
}  // namespace corvelle::testing
