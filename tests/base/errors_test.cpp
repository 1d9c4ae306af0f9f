#include "base/errors.h"

#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "tests/support/runtime_error.h"

namespace corvelle {
namespace {

using namespace std::string_view_literals;

static_assert(sizeof(Error) == sizeof(void*), "operations give it back in a register");

TEST(Error, NamesOperationAndArgument) {
  EXPECT_RUNTIME_ERROR_SAYING(Error(ErrorNumber::invalid_argument, {u"getStr_Pf", u"Num"}, {u"is ", u"0"}),
                              ErrorNumber::invalid_argument, u"getStr_Pf: Num is 0");
  EXPECT_RUNTIME_ERROR_SAYING(Error(ErrorNumber::overflow, {u"", u""}, {}), ErrorNumber::overflow, u":  ");
}

// Hosts handle errors by these numbers.
TEST(ErrorNumbers, AreThePublishedOnes) {
  EXPECT_EQ(hresult_of(ErrorNumber::invalid_argument), static_cast<std::int32_t>(0x800A0005));
  EXPECT_EQ(hresult_of(ErrorNumber::overflow), static_cast<std::int32_t>(0x800A0006));
  EXPECT_EQ(hresult_of(ErrorNumber::type_mismatch), static_cast<std::int32_t>(0x800A000D));
  EXPECT_EQ(hresult_of(ErrorNumber::object_not_set), static_cast<std::int32_t>(0x800A005B));
  EXPECT_EQ(hresult_of(ErrorNumber::object_required), static_cast<std::int32_t>(0x800A01A8));
  EXPECT_EQ(hresult_of(ErrorNumber::no_such_member), static_cast<std::int32_t>(0x800A01B6));
}

TEST(Error, IsNoneAtFirst) { EXPECT_FALSE(Error()); }

TEST(Error, OfAnotherSystemKeepsItsNumber) {
  const Error error(-2147217405, {u"File_Find", u"FilePath"}, {u"\"a\": ", u"File name too long"});
  EXPECT_EQ(error.hresult(), -2147217405);
  EXPECT_EQ(error.description(), u"File_Find: FilePath \"a\": File name too long");
  EXPECT_EQ(error.source(), u"");
}

TEST(Error, OfAHostIsAsTheHostSaid) {
  const Error error(-2146825287, u"Invalid operation.", u"DAO.TableDefs");
  EXPECT_EQ(error.hresult(), -2146825287);
  EXPECT_EQ(error.description(), u"Invalid operation.");
  EXPECT_EQ(error.source(), u"DAO.TableDefs");
  const Error bare(-1, u"", u"");
  EXPECT_TRUE(bare);
  EXPECT_EQ(bare.description(), u"");
  EXPECT_EQ(bare.source(), u"");
}

// What hands the texts on takes them as the system does, up to a NUL.
TEST(Error, HasANulBehindEachText) {
  const Error host(-1, u"description", u"source");
  const Error bare(-1, u"", u"");
  const Error own(ErrorNumber::overflow, {u"Center", u"Str"}, {u"is ", u"long"});
  const Error memory = out_of_memory();
  for (const Error* error : {&host, &bare, &own, &memory}) {
    for (const std::u16string_view text : {error->description(), error->source()}) {
      EXPECT_EQ(*(text.data() + text.size()), u'\0') << ::testing::PrintToString(*error);
    }
  }
}

TEST(Error, KeepsEveryCodeUnit) {
  const Error host(-1, u"a\0\xD800"sv, u"\xDC00\0b\0"sv);
  EXPECT_EQ(host.description(), u"a\0\xD800"sv);
  EXPECT_EQ(host.source(), u"\xDC00\0b\0"sv);
  const Error own(ErrorNumber::overflow, {u"\0"sv, u"\xDC00"}, {u"\xD800\0"sv, u""});
  EXPECT_EQ(own.description(), u"\0: \xDC00 \xD800\0"sv);
}

// It is kept after the caller's texts are gone.
TEST(Error, OwnsItsTexts) {
  auto description = std::make_unique<std::u16string>(100, u'd');
  auto source = std::make_unique<std::u16string>(100, u's');
  const Error error(-1, *description, *source);
  description.reset();
  source.reset();
  EXPECT_EQ(error.description(), std::u16string(100, u'd'));
  EXPECT_EQ(error.source(), std::u16string(100, u's'));
}

TEST(Error, MovesLeaveNone) {
  Error source(-1, u"description", u"source");
  Error target(std::move(source));
  EXPECT_FALSE(source);  // NOLINT(bugprone-use-after-move): the empty state is promised
  EXPECT_EQ(target.description(), u"description");
  source = std::move(target);
  EXPECT_FALSE(target);  // NOLINT(bugprone-use-after-move): likewise
  EXPECT_EQ(source.description(), u"description");
  source = Error(-2, u"another", u"");
  EXPECT_EQ(source.description(), u"another") << "the former one is freed";
}

TEST(OutOfMemory, IsTheSystemsOwnNumber) {
  EXPECT_OUT_OF_MEMORY(out_of_memory());
  Error first = out_of_memory();
  const Error second = out_of_memory();
  first = Error();
  EXPECT_OUT_OF_MEMORY(out_of_memory());
  EXPECT_TRUE(second) << "each is one of its own";
}

TEST(DecimalText, WritesEveryDigitAndTheSign) {
  const auto text = [](std::int64_t value) { return std::u16string(std::u16string_view(decimal_text(value))); };
  EXPECT_EQ(text(0), u"0");
  EXPECT_EQ(text(7), u"7");
  EXPECT_EQ(text(10), u"10");
  EXPECT_EQ(text(-1), u"-1");
  EXPECT_EQ(text(-32769), u"-32769");
  EXPECT_EQ(text(1234567890), u"1234567890");
  EXPECT_EQ(text(std::numeric_limits<std::int64_t>::max()), u"9223372036854775807");
  EXPECT_EQ(text(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

TEST(InQuotes, CutsAfterFortyCharacters) {
  const auto quoted = [](std::u16string_view value) { return std::u16string(std::u16string_view(in_quotes(value))); };
  EXPECT_EQ(quoted(u""), u"\"\"");
  EXPECT_EQ(quoted(u"a\0\xD800"sv), u"\"a\0\xD800\""sv);
  EXPECT_EQ(quoted(std::u16string(39, u'x')), u"\"" + std::u16string(39, u'x') + u"\"");
  EXPECT_EQ(quoted(std::u16string(40, u'x')), u"\"" + std::u16string(40, u'x') + u"\"");
  EXPECT_EQ(quoted(std::u16string(41, u'x')), u"\"" + std::u16string(40, u'x') + u"…\"");
  EXPECT_EQ(quoted(std::u16string(32767, u'x')), u"\"" + std::u16string(40, u'x') + u"…\"");
}

}  // namespace
}  // namespace corvelle
