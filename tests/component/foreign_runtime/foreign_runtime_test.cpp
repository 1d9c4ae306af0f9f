// The component in hosts that have the compiler's shared C++ runtime loaded, and beside another copy of itself: each
// host is a process of its own, since what is loaded first is what matters.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/child_process.h"

namespace corvelle::testing {
namespace {

const std::vector<std::wstring> kRuntime = {CORVELLE_SHARED_RUNTIMES};
const std::wstring kComponent = L"Corvelle.dll";
const std::wstring kCopy = L"Corvelle copy.dll";

// How many answers were wrong in a host that loads `libraries` in this order.
DWORD wrong_answers_with(const std::vector<std::wstring>& libraries) {
  const std::wstring folder = full_path(CORVELLE_HOST_FOLDER) + L"\\";
  const std::wstring host = folder + L"foreign_runtime_host.exe";
  std::wstring command = L"\"" + host + L"\"";
  for (const std::wstring& library : libraries) command += L" \"" + folder + library + L"\"";
  return run_program(host, command);
}

std::vector<std::wstring> joined(std::vector<std::wstring> first, const std::vector<std::wstring>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST(ForeignRuntime, IsNotThere) { EXPECT_EQ(wrong_answers_with({kComponent}), 0u); }

TEST(ForeignRuntime, IsLoadedBefore) { EXPECT_EQ(wrong_answers_with(joined(kRuntime, {kComponent})), 0u); }

TEST(ForeignRuntime, IsLoadedAfter) { EXPECT_EQ(wrong_answers_with(joined({kComponent}, kRuntime)), 0u); }

TEST(ForeignRuntime, IsLoadedBetweenTwoCopies) {
  EXPECT_EQ(wrong_answers_with(joined(joined({kComponent}, kRuntime), {kCopy})), 0u);
}

TEST(ForeignRuntime, IsThatOfAnotherCopy) { EXPECT_EQ(wrong_answers_with({kCopy, kComponent}), 0u); }

}  // namespace
}  // namespace corvelle::testing
