#include "data/first_error.h"

#include <gtest/gtest.h>

namespace corvelle {
namespace {

Error described(std::u16string_view description) { return Error(-1, description, u""); }

TEST(FirstError, IsTheFirst) {
  FirstError errors;
  EXPECT_FALSE(errors.any());
  EXPECT_FALSE(errors.take());
  errors.keep(Error());
  EXPECT_FALSE(errors.any()) << "none is no error";
  errors.keep(described(u"first"));
  errors.keep(described(u"second"));
  errors.keep(Error());
  EXPECT_TRUE(errors.any());
  EXPECT_EQ(errors.take().description(), u"first");
}

TEST(FirstError, IsGoneForWhoeverTookIt) {
  FirstError errors;
  errors.keep(described(u"first"));
  EXPECT_TRUE(errors.take());
  EXPECT_FALSE(errors.any());
  EXPECT_FALSE(errors.take());
  errors.keep(described(u"second"));
  EXPECT_EQ(errors.take().description(), u"second");
}

TEST(FirstError, SaysWhetherThereWasOneToForget) {
  FirstError errors;
  EXPECT_FALSE(errors.forget());
  errors.keep(described(u"first"));
  EXPECT_TRUE(errors.forget());
  EXPECT_FALSE(errors.any());
  EXPECT_FALSE(errors.forget());
}

}  // namespace
}  // namespace corvelle
