#include "text/display_width.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/cases/width_cases.h"
#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

TEST(DisplayWidth, Cases) {
  testing::run_natively(testing::width_cases(), {
                                                    {u"sumByte_Pf", testing::native(&sumByte_Pf)},
                                                    {u"GetByte_Pf", testing::native(&GetByte_Pf)},
                                                    {u"Get_StrWidth", testing::native(&Get_StrWidth)},
                                                });
}

TEST(DisplayWidth, SaysHowLongAnOverlongTextIs) {
  const std::u16string text(32767, u'a');
  EXPECT_RUNTIME_ERROR_SAYING(sumByte_Pf(text), ErrorNumber::overflow,
                              u"sumByte_Pf: vStr has 32767 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(GetByte_Pf(text, 0), ErrorNumber::overflow,
                              u"GetByte_Pf: vStr has 32767 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(Get_StrWidth(text), ErrorNumber::overflow,
                              u"Get_StrWidth: strCon has 32767 characters; at most 32766 can be counted");
}

TEST(DisplayWidth, SaysHowWideATooWideTextIs) {
  const std::u16string text = std::u16string(16383, u'中').append(u"ab");
  EXPECT_RUNTIME_ERROR_SAYING(GetByte_Pf(text, 0), ErrorNumber::overflow,
                              u"GetByte_Pf: vStr gives 32768, which does not fit in 16 bits");
  EXPECT_RUNTIME_ERROR_SAYING(Get_StrWidth(text), ErrorNumber::overflow,
                              u"Get_StrWidth: strCon gives 32768, which does not fit in 16 bits");
}

}  // namespace
}  // namespace corvelle
