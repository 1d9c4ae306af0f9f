#include "exceptions/or_throw.h"

#include <gmock/gmock.h>

#include <string>
#include <type_traits>

#include "text/fields.h"

namespace corvelle {
namespace {

static_assert(std::is_nothrow_copy_constructible_v<Exception> && std::is_nothrow_copy_assignable_v<Exception>);

// The exception that `error` is thrown as.
Exception thrown_for(Error error) {
  try {
    or_throw(std::move(error));
  } catch (const Exception& exception) {
    return exception;
  }
  ADD_FAILURE() << "nothing was thrown";
  return Exception(out_of_memory());
}

TEST(OrThrow, GivesTheValue) {
  EXPECT_EQ(or_throw(getStr_Pf(u"a,b,", 2, u",")), u"b");
  EXPECT_EQ(or_throw(Result<bool>(false)), false);
}

TEST(OrThrow, ThrowsTheErrorInPlaceOfAValue) {
  try {
    or_throw(getStr_Pf(u"螺栓,", 2, u"，"));
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::exception& exception) {
    EXPECT_STREQ(exception.what(), "getStr_Pf: Num is 2; Str has 0 fields ended by \"，\"");
    EXPECT_EQ(dynamic_cast<const Exception&>(exception).error().hresult(), hresult_of(ErrorNumber::invalid_argument));
  }
}

TEST(OrThrow, IsQuietWhereThereIsNoError) { EXPECT_NO_THROW(or_throw(Error())); }

TEST(OrThrow, ThrowsAnErrorWithAllThatItSays) {
  const Exception exception = thrown_for(Error(-2146825287, u"对象无效", u"DAO.Database"));
  EXPECT_EQ(exception.error().hresult(), -2146825287);
  EXPECT_EQ(exception.error().description(), u"对象无效");
  EXPECT_EQ(exception.error().source(), u"DAO.Database");
  EXPECT_STREQ(exception.what(), "对象无效");
}

TEST(OrThrow, ThrowsWantOfMemoryToo) {
  EXPECT_STREQ(thrown_for(out_of_memory()).what(), "There is not enough memory.");
}

TEST(Exception, SaysTheSameInEveryCopy) {
  auto first = std::make_unique<Exception>(Error(-1, u"first", u""));
  const Exception copy = *first;
  Exception another = thrown_for(Error(-2, u"another", u""));
  another = copy;
  first.reset();
  EXPECT_STREQ(copy.what(), "first");
  EXPECT_STREQ(another.what(), "first");
  EXPECT_EQ(another.error().hresult(), -1);
}

}  // namespace
}  // namespace corvelle
