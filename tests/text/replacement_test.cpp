#include "text/replacement.h"

#include <string>

#include "base/ansi_code.h"
#include "tests/cases/replacement_cases.h"
#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

using testing::native;
using testing::value_of;

TEST(Replacement, NativeCases) {
  testing::run_natively(testing::replacement_cases(),
                        {{u"ClsVexApp.Replace_Str", native(&Replace_Str)},
                         {u"ClsVexApp.ConversionStr_Long", native(&ConversionStr_Long)},
                         {u"ClsVexApp.ConversionStr_Short", native(&ConversionStr_Short)}});
}

TEST(ConversionStrLong, EveryFillerIsWhatItsCodeStandsFor) {
  std::u16string expected;
  for (std::int32_t i = 1; i <= 32670; ++i) (expected += u'中').append(decoded(97 + i).view());
  EXPECT_EQ(ConversionStr_Long(std::u16string(32670, u'中')), expected);
}

TEST(ConversionStrShort, UndoesOneCharacterFillers) {
  EXPECT_EQ(ConversionStr_Short(value_of(ConversionStr_Long(u"hello"))), u"hello");
  const std::u16string text(158, u'中');
  EXPECT_EQ(ConversionStr_Short(value_of(ConversionStr_Long(text))), text);
  EXPECT_FALSE(value_of(ConversionStr_Short(value_of(ConversionStr_Long(text + u"中文")))) == text + u"中文");
}

TEST(Replacement, OverflowNamesOperationAndLength) {
  EXPECT_RUNTIME_ERROR_SAYING(Replace_Str(std::u16string(32768, u'a'), u"a", u"b"), ErrorNumber::overflow,
                              u"Replace_Str: strExpression has 32768 characters; at most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(Replace_Str(std::u16string(32766, u'a'), u"a", u"bcd"), ErrorNumber::overflow,
                              u"Replace_Str: strExpression with every Str1 replaced by Str2 has 98298 characters; at "
                              u"most 32766 can be counted");
  EXPECT_RUNTIME_ERROR_SAYING(ConversionStr_Long(std::u16string(32671, u'a')), ErrorNumber::overflow,
                              u"ConversionStr_Long: StrTmp has 32671 characters; there are fillers for 32670");
  EXPECT_RUNTIME_ERROR_SAYING(ConversionStr_Short(std::u16string(32767, u'a')), ErrorNumber::overflow,
                              u"ConversionStr_Short: StrTmp has 32767 characters; at most 32766 can be counted");
}

}  // namespace
}  // namespace corvelle
