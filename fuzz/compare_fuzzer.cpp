// Holds the operations of one group, CORVELLE_FUZZ_GROUP, against the reference model on a fuzzer's bytes.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "tests/reference/comparison.h"

namespace {

const corvelle::testing::OperationGroup& group() {
  const auto& groups = corvelle::testing::operation_groups();
  const auto found =
      std::find_if(groups.begin(), groups.end(), [](const auto& each) { return each.name == CORVELLE_FUZZ_GROUP; });
  return found != groups.end() ? *found : throw std::logic_error("no such group: " CORVELLE_FUZZ_GROUP);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const corvelle::testing::OperationGroup& compared = group();
  if (const auto difference = corvelle::testing::difference_in(compared, {bytes, size})) {
    std::fputs(difference->c_str(), stderr);
    std::abort();
  }
  return 0;
}
