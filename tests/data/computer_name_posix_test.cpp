#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <string>

#include "data/computer_name.h"
#include "tests/support/result.h"

namespace corvelle {
namespace {

TEST(GetComputerNm, IsTheHostNameUpToItsFirstDot) {
  utsname machine{};
  ASSERT_EQ(uname(&machine), 0);
  const std::string host = machine.nodename;
  const std::string expected = host.substr(0, host.find('.'));
  EXPECT_EQ(GetComputerNm(), std::u16string(expected.begin(), expected.end()));
}

}  // namespace
}  // namespace corvelle
