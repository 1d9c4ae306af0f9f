// Whether files are found, on every platform. What a name means to one platform alone is tested in its own file.
#include "data/file_find.h"

#include <gmock/gmock.h>

#include <vector>

#include "tests/support/runtime_error.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;

class FileFind : public ::testing::Test {
 protected:
  Result<bool> found(const std::filesystem::path& name) { return File_Find((folder_.path() / name).u16string()); }

  TemporaryFolder folder_;
};

TEST(FileFindSearch, GetsTheTrimmedPath) {
  std::vector<std::u16string> patterns;
  const auto search = [&](std::u16string_view pattern) { return patterns.emplace_back(pattern), true; };
  EXPECT_EQ(File_Find(u"  a b*.txt ", search), true);
  EXPECT_EQ(File_Find(u"\u3000", search), true) << "an ideographic space is no space";
  EXPECT_THAT(patterns, ElementsAre(u"a b*.txt", u"\u3000"));
}

TEST(FileFindSearch, RunsForAnEmptyPathAndCountsForNothing) {
  std::vector<std::u16string> patterns;
  const auto search = [&](std::u16string_view pattern) { return patterns.emplace_back(pattern), true; };
  EXPECT_EQ(File_Find(u"", search), false);
  EXPECT_EQ(File_Find(u"   ", search), false);
  EXPECT_THAT(patterns, ElementsAre(u"", u""));
}

TEST_F(FileFind, FindsAnOrdinaryFile) {
  const std::filesystem::path file = folder_.add_file("orders.mdb");
  EXPECT_EQ(File_Find(file.u16string()), true);
  EXPECT_EQ(File_Find(u"  " + file.u16string() + u"  "), true);
  EXPECT_EQ(found("orders.md"), false);
  EXPECT_EQ(found("orders.mdb2"), false);
}

TEST_F(FileFind, FindsNamesWithChineseCharacters) {
  folder_.add_file(std::filesystem::path(u"账套/订单 2024.mdb"));
  EXPECT_EQ(found(u"账套/订单 2024.mdb"), true);
  EXPECT_EQ(found(u"账套/订*.mdb"), true);
  EXPECT_EQ(found(u"账套/??\u0020????.mdb"), true);
  EXPECT_EQ(found(u"账套/单*.mdb"), false);
}

TEST_F(FileFind, IsFalseForTheEmptyPath) {
  EXPECT_EQ(File_Find(u""), false);
  EXPECT_EQ(File_Find(u"   "), false);
}

TEST_F(FileFind, IsFalseForFoldersHoweverTheyAreWritten) {
  folder_.add_file("data/orders.mdb");
  EXPECT_EQ(found("data"), false);
  EXPECT_EQ(found("data/"), false);
  EXPECT_EQ(found("dat*"), false);
  EXPECT_EQ(found("data/."), false);
  EXPECT_EQ(found("data/.."), false);
  EXPECT_EQ(File_Find(folder_.path().root_path().u16string()), false) << "the root of the drive";
}

TEST_F(FileFind, IsFalseForAFileWrittenAsAFolder) {
  folder_.add_file("orders.mdb");
  EXPECT_EQ(found("orders.mdb/"), false);
}

TEST_F(FileFind, IsFalseForAMissingFolder) {
  EXPECT_EQ(found("missing/orders.mdb"), false);
  EXPECT_EQ(found("missing/*.mdb"), false);
}

TEST_F(FileFind, HonoursWildcardsInTheLastComponent) {
  folder_.add_file("data/orders.mdb");
  EXPECT_EQ(found("data/*.mdb"), true);
  EXPECT_EQ(found("data/*"), true);
  EXPECT_EQ(found("data/o*s.m?b"), true);
  EXPECT_EQ(found("data/**.mdb"), true);
  EXPECT_EQ(found("data/*or*er*.*db*"), true);
  EXPECT_EQ(found("data/*.txt"), false);
  EXPECT_EQ(found("data/?.mdb"), false);
  EXPECT_EQ(found("data/*s.mdc"), false);
}

TEST_F(FileFind, GoesOnToTheFirstEntryThatCounts) {
  for (const char* folder : {"a.mdb", "b.mdb", "c.mdb", "y.mdb", "z.mdb"}) {
    std::filesystem::create_directory(folder_.path() / folder);
  }
  EXPECT_EQ(found("*.mdb"), false);
  folder_.add_file("m.mdb");
  EXPECT_EQ(found("*.mdb"), true);
}

TEST_F(FileFind, CountsReadOnlyFiles) {
  const std::filesystem::path file = folder_.add_file("archive.mdb");
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  EXPECT_EQ(found("archive.mdb"), true);
  EXPECT_EQ(found("arch*"), true);
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

TEST_F(FileFind, FailsForANulInThePath) {
  const std::filesystem::path file = folder_.add_file("orders.mdb");
  const Error error = error_of(File_Find(file.u16string() + u"\0x"s));
  ASSERT_TRUE(error);
  EXPECT_LT(error.hresult(), 0);
  EXPECT_TRUE(error.description().starts_with(u"File_Find: FilePath \"")) << "names operation and argument";
}

}  // namespace
}  // namespace corvelle::testing
