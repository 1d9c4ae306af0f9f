#include "base/errors.h"

#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

TEST(Raise, NamesOperationAndArgument) {
  EXPECT_RUNTIME_ERROR_SAYING(raise(ErrorNumber::invalid_argument, {u"getStr_Pf", u"Num"}, u"is 0"),
                              ErrorNumber::invalid_argument, u"getStr_Pf: Num is 0");
}

TEST(RuntimeError, SaysItsNameInEnglish) {
  EXPECT_STREQ(RuntimeError(ErrorNumber::overflow, u"").what(), "overflow");
  EXPECT_STREQ(RuntimeError(ErrorNumber::object_required, u"").what(), "object required");
}

TEST(HostError, KeepsWhatTheHostSaid) {
  const HostError error(-2146825287, u"Invalid operation.", u"DAO.TableDefs");
  EXPECT_EQ(error.hresult(), -2146825287);
  EXPECT_EQ(error.description(), u"Invalid operation.");
  EXPECT_EQ(error.source(), u"DAO.TableDefs");
}

TEST(DecimalText, WritesTheSign) {
  EXPECT_EQ(decimal_text(0), u"0");
  EXPECT_EQ(decimal_text(-32769), u"-32769");
}

TEST(InQuotes, CutsAfterFortyCharacters) {
  EXPECT_EQ(in_quotes(u""), u"\"\"");
  EXPECT_EQ(in_quotes(std::u16string(40, u'x')), u"\"" + std::u16string(40, u'x') + u"\"");
  EXPECT_EQ(in_quotes(std::u16string(41, u'x')), u"\"" + std::u16string(40, u'x') + u"…\"");
}

}  // namespace
}  // namespace corvelle
