#include "base/errors.h"

#include <string>

#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

TEST(Raise, NamesOperationAndArgument) {
  EXPECT_RUNTIME_ERROR_SAYING(raise(ErrorNumber::invalid_argument, {u"getStr_Pf", u"Num"}, u"is 0"),
                              ErrorNumber::invalid_argument, u"getStr_Pf: Num is 0");
}

// Hosts handle errors by these numbers.
TEST(ErrorNumbers, AreThePublishedOnes) {
  EXPECT_EQ(static_cast<int>(ErrorNumber::invalid_argument), 5);
  EXPECT_EQ(static_cast<int>(ErrorNumber::overflow), 6);
  EXPECT_EQ(static_cast<int>(ErrorNumber::type_mismatch), 13);
  EXPECT_EQ(static_cast<int>(ErrorNumber::object_not_set), 91);
  EXPECT_EQ(static_cast<int>(ErrorNumber::object_required), 424);
  EXPECT_EQ(static_cast<int>(ErrorNumber::no_such_member), 438);
}

TEST(RuntimeError, SaysItsNameInEnglish) {
  const auto name_of = [](ErrorNumber number) { return std::string(RuntimeError(number, u"").what()); };
  EXPECT_EQ(name_of(ErrorNumber::invalid_argument), "invalid procedure call or argument");
  EXPECT_EQ(name_of(ErrorNumber::overflow), "overflow");
  EXPECT_EQ(name_of(ErrorNumber::type_mismatch), "type mismatch");
  EXPECT_EQ(name_of(ErrorNumber::object_not_set), "object reference not set");
  EXPECT_EQ(name_of(ErrorNumber::object_required), "object required");
  EXPECT_EQ(name_of(ErrorNumber::no_such_member), "object does not support the property or method");
  EXPECT_STREQ(HostError(0, u"", u"").what(), "error of a host object");
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
