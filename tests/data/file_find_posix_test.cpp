#include <gtest/gtest.h>

#include <cerrno>
#include <iterator>
#include <string>

#include "data/file_find.h"
#include "tests/support/host_error.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using namespace std::string_literals;

class FileFindOnPosix : public ::testing::Test {
 protected:
  bool found(const std::filesystem::path& name) { return File_Find((folder_.path() / name).u16string()); }

  TemporaryFolder folder_;
};

TEST_F(FileFindOnPosix, TakesADotFileForHidden) {
  folder_.add_file(".orders");
  EXPECT_FALSE(found(".orders"));
  EXPECT_FALSE(found(".*"));
  EXPECT_FALSE(found("*"));
}

TEST_F(FileFindOnPosix, ComparesNamesExactly) {
  folder_.add_file("Orders.mdb");
  EXPECT_FALSE(found("orders.mdb"));
  EXPECT_FALSE(found("orders*"));
}

TEST_F(FileFindOnPosix, CountsAQuestionMarkForOneCharacterOfAnyLength) {
  folder_.add_file(std::filesystem::path(u"a中😀"));
  EXPECT_TRUE(found("???"));
  EXPECT_TRUE(found("*?"));
  EXPECT_FALSE(found("????"));
  EXPECT_FALSE(found("??"));
}

TEST_F(FileFindOnPosix, TakesCharactersOfTwoUnitsByTheirName) {
  folder_.add_file(std::filesystem::path(u"a中😀😀.mdb"));
  EXPECT_TRUE(found(std::filesystem::path(u"a中😀😀.mdb")));
  EXPECT_TRUE(found(std::filesystem::path(u"*😀.mdb")));
  EXPECT_FALSE(found(std::filesystem::path(u"a中😀.mdb")));
}

TEST_F(FileFindOnPosix, MixesWildcardsFreely) {
  folder_.add_file("orders.mdb");
  EXPECT_TRUE(found("?*?.???"));
  EXPECT_TRUE(found("*?s?m*"));
  EXPECT_FALSE(found("?*?.????"));
  EXPECT_FALSE(found("orders.mdb?")) << "a question mark stands for a character that is there";
  EXPECT_TRUE(found("orders.mdb*"));
}

TEST_F(FileFindOnPosix, IsFalseWhereAFileStandsInTheFoldersPlace) {
  folder_.add_file("orders.mdb");
  EXPECT_FALSE(found("orders.mdb/orders.mdb"));
  EXPECT_FALSE(found("orders.mdb/*"));
}

TEST_F(FileFindOnPosix, HoldsNothingOpen) {
  folder_.add_file("orders.mdb");
  const auto descriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  };
  const auto before = descriptors();
  EXPECT_TRUE(found("*.mdb"));
  EXPECT_FALSE(found("*.txt"));
  EXPECT_EQ(descriptors(), before);
}

TEST_F(FileFindOnPosix, FollowsLinksToFiles) {
  std::filesystem::create_symlink(folder_.add_file("kept/orders.mdb"), folder_.path() / "link.mdb");
  std::filesystem::create_symlink(folder_.path() / "nowhere", folder_.path() / "dangling.txt");
  EXPECT_TRUE(found("link.mdb"));
  EXPECT_TRUE(found("*.mdb"));
  EXPECT_FALSE(found("dangling.txt"));
  EXPECT_FALSE(found("*.txt"));
}

TEST_F(FileFindOnPosix, PassesOverNamesThatAreNoText) {
  std::filesystem::path name(std::string("\xFF\xFE.mdb"));
  folder_.add_file(name);
  EXPECT_TRUE(found("*.mdb"));
}

TEST_F(FileFindOnPosix, SearchesTheCurrentFolderForARelativePath) {
  const auto former = std::filesystem::current_path();
  folder_.add_file("orders.mdb");
  std::filesystem::current_path(folder_.path());
  EXPECT_TRUE(File_Find(u"orders.mdb"));
  EXPECT_TRUE(File_Find(u"*.mdb"));
  std::filesystem::current_path(former);
}

TEST_F(FileFindOnPosix, FailsWithTheSystemsErrorForAPathThatCannotBe) {
  const auto error = host_error_of([&] { found(std::string(300, 'x')); });
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->hresult(), static_cast<std::int32_t>(0x80040000u | ENAMETOOLONG));
  EXPECT_TRUE(error->description().ends_with(u": File name too long"));
  EXPECT_HOST_ERROR(File_Find(u"/\xD800"s), static_cast<std::int32_t>(0x80040000u | EILSEQ));
  EXPECT_HOST_ERROR(File_Find(u"/\xDC00x"s), static_cast<std::int32_t>(0x80040000u | EILSEQ));
  EXPECT_HOST_ERROR(File_Find(u"/\xD800\xD800"s), static_cast<std::int32_t>(0x80040000u | EILSEQ));
  EXPECT_HOST_ERROR(found(std::string(300, 'x') + "/*"), static_cast<std::int32_t>(0x80040000u | ENAMETOOLONG));
}

}  // namespace
}  // namespace corvelle::testing
