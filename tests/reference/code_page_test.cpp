// The model's code page against the platform's and against the product's.
#include "tests/reference/code_page.h"

#include <gtest/gtest.h>

#include "base/ansi_code.h"
#include "tests/base/code_page.h"

namespace corvelle {
namespace {

constexpr int kUnits = 0x10000;
constexpr int kCodes = 0x8000;

TEST(ReferenceCodePage, CodesAreThePlatforms) {
  const testing::CodePage platform;
  int differences = 0;
  for (int unit = 0; unit < kUnits; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    differences += reference::ansi_code(character) == platform.code_of(character) ? 0 : 1;
  }
  EXPECT_EQ(differences, testing::CodePage::kDifferences);
}

TEST(ReferenceCodePage, DecodesAsThePlatformDoes) {
  const testing::CodePage platform;
  int differences = 0;
  for (int code = 0; code < kCodes; ++code) {
    differences += reference::decoded(code) == platform.decoded(code) ? 0 : 1;
  }
  EXPECT_EQ(differences, testing::CodePage::kDecodingDifferences);
}

TEST(ReferenceCodePage, CodesAreTheProducts) {
  for (int unit = 0; unit < kUnits; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    ASSERT_EQ(reference::ansi_code(character), ansi_code(character)) << std::hex << unit;
  }
}

TEST(ReferenceCodePage, DecodesAsTheProductDoes) {
  for (int code = 0; code < kCodes; ++code) ASSERT_EQ(reference::decoded(code), decoded(code).view()) << code;
}

}  // namespace
}  // namespace corvelle
