// Whether files are found, on every platform. What a name means to one platform alone is tested in its own file.
#include "data/file_find.h"

#include <gmock/gmock.h>

#include <vector>

#include "tests/support/host_error.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;

class FileFind : public ::testing::Test {
 protected:
  bool found(const std::filesystem::path& name) { return File_Find((folder_.path() / name).u16string()); }

  TemporaryFolder folder_;
};

TEST(FileFindSearch, GetsTheTrimmedPath) {
  std::vector<std::u16string> patterns;
  const auto search = [&](std::u16string_view pattern) { return patterns.emplace_back(pattern), true; };
  EXPECT_TRUE(File_Find(u"  a b*.txt ", search));
  EXPECT_TRUE(File_Find(u"\u3000", search)) << "an ideographic space is no space";
  EXPECT_THAT(patterns, ElementsAre(u"a b*.txt", u"\u3000"));
}

TEST(FileFindSearch, RunsForAnEmptyPathAndCountsForNothing) {
  std::vector<std::u16string> patterns;
  const auto search = [&](std::u16string_view pattern) { return patterns.emplace_back(pattern), true; };
  EXPECT_FALSE(File_Find(u"", search));
  EXPECT_FALSE(File_Find(u"   ", search));
  EXPECT_THAT(patterns, ElementsAre(u"", u""));
}

TEST_F(FileFind, FindsAnOrdinaryFile) {
  const std::filesystem::path file = folder_.add_file("orders.mdb");
  EXPECT_TRUE(File_Find(file.u16string()));
  EXPECT_TRUE(File_Find(u"  " + file.u16string() + u"  "));
  EXPECT_FALSE(found("orders.md"));
  EXPECT_FALSE(found("orders.mdb2"));
}

TEST_F(FileFind, FindsNamesWithChineseCharacters) {
  folder_.add_file(std::filesystem::path(u"账套/订单 2024.mdb"));
  EXPECT_TRUE(found(u"账套/订单 2024.mdb"));
  EXPECT_TRUE(found(u"账套/订*.mdb"));
  EXPECT_TRUE(found(u"账套/??\u0020????.mdb"));
  EXPECT_FALSE(found(u"账套/单*.mdb"));
}

TEST_F(FileFind, IsFalseForTheEmptyPath) {
  EXPECT_FALSE(File_Find(u""));
  EXPECT_FALSE(File_Find(u"   "));
}

TEST_F(FileFind, IsFalseForFoldersHoweverTheyAreWritten) {
  folder_.add_file("data/orders.mdb");
  EXPECT_FALSE(found("data"));
  EXPECT_FALSE(found("data/"));
  EXPECT_FALSE(found("dat*"));
  EXPECT_FALSE(found("data/."));
  EXPECT_FALSE(found("data/.."));
  EXPECT_FALSE(File_Find(folder_.path().root_path().u16string())) << "the root of the drive";
}

TEST_F(FileFind, IsFalseForAFileWrittenAsAFolder) {
  folder_.add_file("orders.mdb");
  EXPECT_FALSE(found("orders.mdb/"));
}

TEST_F(FileFind, IsFalseForAMissingFolder) {
  EXPECT_FALSE(found("missing/orders.mdb"));
  EXPECT_FALSE(found("missing/*.mdb"));
}

TEST_F(FileFind, HonoursWildcardsInTheLastComponent) {
  folder_.add_file("data/orders.mdb");
  EXPECT_TRUE(found("data/*.mdb"));
  EXPECT_TRUE(found("data/*"));
  EXPECT_TRUE(found("data/o*s.m?b"));
  EXPECT_TRUE(found("data/**.mdb"));
  EXPECT_TRUE(found("data/*or*er*.*db*"));
  EXPECT_FALSE(found("data/*.txt"));
  EXPECT_FALSE(found("data/?.mdb"));
  EXPECT_FALSE(found("data/*s.mdc"));
}

TEST_F(FileFind, GoesOnToTheFirstEntryThatCounts) {
  for (const char* folder : {"a.mdb", "b.mdb", "c.mdb", "y.mdb", "z.mdb"}) {
    std::filesystem::create_directory(folder_.path() / folder);
  }
  EXPECT_FALSE(found("*.mdb"));
  folder_.add_file("m.mdb");
  EXPECT_TRUE(found("*.mdb"));
}

TEST_F(FileFind, CountsReadOnlyFiles) {
  const std::filesystem::path file = folder_.add_file("archive.mdb");
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  EXPECT_TRUE(found("archive.mdb"));
  EXPECT_TRUE(found("arch*"));
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

TEST_F(FileFind, FailsForANulInThePath) {
  const std::filesystem::path file = folder_.add_file("orders.mdb");
  const auto error = host_error_of([&] { File_Find(file.u16string() + u"\0x"s); });
  ASSERT_TRUE(error.has_value());
  EXPECT_LT(error->hresult(), 0);
  EXPECT_TRUE(error->description().starts_with(u"File_Find: FilePath \"")) << "names operation and argument";
}

}  // namespace
}  // namespace corvelle::testing
