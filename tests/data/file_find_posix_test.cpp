#include <dirent.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <string>

#include "data/file_find.h"
#include "tests/support/runtime_error.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using namespace std::string_literals;

class FileFindOnPosix : public ::testing::Test {
 protected:
  Result<bool> found(const std::filesystem::path& name) { return File_Find((folder_.path() / name).u16string()); }

  TemporaryFolder folder_;
};

TEST_F(FileFindOnPosix, TakesADotFileForHidden) {
  folder_.add_file(".orders");
  EXPECT_EQ(found(".orders"), false);
  EXPECT_EQ(found(".*"), false);
  EXPECT_EQ(found("*"), false);
}

TEST_F(FileFindOnPosix, ComparesNamesExactly) {
  folder_.add_file("Orders.mdb");
  EXPECT_EQ(found("orders.mdb"), false);
  EXPECT_EQ(found("orders*"), false);
}

TEST_F(FileFindOnPosix, CountsAQuestionMarkForOneCharacterOfAnyLength) {
  folder_.add_file(std::filesystem::path(u"a中😀"));
  EXPECT_EQ(found("???"), true);
  EXPECT_EQ(found("*?"), true);
  EXPECT_EQ(found("????"), false);
  EXPECT_EQ(found("??"), false);
}

TEST_F(FileFindOnPosix, TakesCharactersOfTwoUnitsByTheirName) {
  folder_.add_file(std::filesystem::path(u"a中😀😀.mdb"));
  EXPECT_EQ(found(std::filesystem::path(u"a中😀😀.mdb")), true);
  EXPECT_EQ(found(std::filesystem::path(u"*😀.mdb")), true);
  EXPECT_EQ(found(std::filesystem::path(u"a中😀.mdb")), false);
}

TEST_F(FileFindOnPosix, MixesWildcardsFreely) {
  folder_.add_file("orders.mdb");
  EXPECT_EQ(found("?*?.???"), true);
  EXPECT_EQ(found("*?s?m*"), true);
  EXPECT_EQ(found("?*?.????"), false);
  EXPECT_EQ(found("orders.mdb?"), false) << "a question mark stands for a character that is there";
  EXPECT_EQ(found("orders.mdb*"), true);
}

TEST_F(FileFindOnPosix, IsFalseWhereAFileStandsInTheFoldersPlace) {
  folder_.add_file("orders.mdb");
  EXPECT_EQ(found("orders.mdb/orders.mdb"), false);
  EXPECT_EQ(found("orders.mdb/*"), false);
}

TEST_F(FileFindOnPosix, HoldsNothingOpen) {
  folder_.add_file("orders.mdb");
  const auto descriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  };
  const auto before = descriptors();
  EXPECT_EQ(found("*.mdb"), true);
  EXPECT_EQ(found("*.txt"), false);
  EXPECT_EQ(descriptors(), before);
}

TEST_F(FileFindOnPosix, FollowsLinksToFiles) {
  std::filesystem::create_symlink(folder_.add_file("kept/orders.mdb"), folder_.path() / "link.mdb");
  std::filesystem::create_symlink(folder_.path() / "nowhere", folder_.path() / "dangling.txt");
  EXPECT_EQ(found("link.mdb"), true);
  EXPECT_EQ(found("*.mdb"), true);
  EXPECT_EQ(found("dangling.txt"), false);
  EXPECT_EQ(found("*.txt"), false);
}

TEST_F(FileFindOnPosix, PassesOverNamesThatAreNoText) {
  std::filesystem::path name(std::string("\xFF\xFE.mdb"));
  folder_.add_file(name);
  EXPECT_EQ(found("*.mdb"), true);
}

TEST_F(FileFindOnPosix, SearchesTheCurrentFolderForARelativePath) {
  const auto former = std::filesystem::current_path();
  folder_.add_file("orders.mdb");
  std::filesystem::current_path(folder_.path());
  EXPECT_EQ(File_Find(u"orders.mdb"), true);
  EXPECT_EQ(File_Find(u"*.mdb"), true);
  std::filesystem::current_path(former);
}

// Characters on both sides of each length that they have in UTF-8, and the last one.
TEST_F(FileFindOnPosix, FindsNamesOfCharactersOfAnyLength) {
  for (const char32_t character :
       {U'\u007F', U'\u0080', U'\u07FF', U'\u0800', U'\uD7FF', U'\uE000', U'\uFFFF', U'\U00010000', U'\U0010FFFF'}) {
    SCOPED_TRACE(::testing::Message() << std::hex << static_cast<std::uint32_t>(character));
    const TemporaryFolder folder;
    const std::filesystem::path name(std::u32string{U'a', character, U'b'});
    folder.add_file(name);
    EXPECT_EQ(File_Find((folder.path() / name).u16string()), true);
    EXPECT_EQ(File_Find((folder.path() / std::filesystem::path(std::u32string{U'*', character, U'?'})).u16string()),
              true);
    EXPECT_EQ(File_Find((folder.path() / "a?b").u16string()), true);
    EXPECT_EQ(File_Find((folder.path() / "a??b").u16string()), false);
  }
}

TEST_F(FileFindOnPosix, FindsLongNamesAndPaths) {
  const std::u16string longest(85, u'中');  // 255 bytes
  std::filesystem::path file;
  for (int depth = 0; depth < 10; ++depth) file /= std::u16string(80, static_cast<char16_t>(u'一' + depth));
  file /= longest;
  folder_.add_file(file);
  EXPECT_EQ(found(file), true);
  EXPECT_EQ(found(file.parent_path() / "*"), true);
  EXPECT_EQ(found(file.parent_path() / (longest.substr(1) + u"?")), true);
  EXPECT_EQ(found(file.parent_path() / (longest + u"?")), false) << "longer than a name can be, but a pattern only";
}

TEST_F(FileFindOnPosix, SearchesTheRootForAPathOfOneComponent) {
  EXPECT_EQ(File_Find(u"/"), false);
  EXPECT_EQ(File_Find(u"/etc"), false);
  EXPECT_EQ(File_Find(u"/et?"), false);
  EXPECT_EQ(File_Find(u"/proc/self/stat*"), true);
  EXPECT_EQ(File_Find(u"//proc//self//stat*"), true) << "slashes in a row are one";
  // What an ordinary search says of the root's own files, whichever these are.
  const auto is_shown_file = [](const std::filesystem::directory_entry& entry) {
    return entry.is_regular_file() && entry.path().filename().string()[0] != '.';
  };
  const auto entries = std::filesystem::directory_iterator("/");
  EXPECT_EQ(File_Find(u"/*"), std::any_of(begin(entries), end(entries), is_shown_file));
}

// Whoever may read everything gives that up for as long as one of these lives.
class WithoutPrivileges {
 public:
  WithoutPrivileges() { EXPECT_TRUE(user_ != 0 || seteuid(kNobody) == 0); }
  ~WithoutPrivileges() { EXPECT_TRUE(user_ != 0 || seteuid(user_) == 0); }
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;
  uid_t user_ = geteuid();
};

TEST_F(FileFindOnPosix, FailsForFoldersThatMayNotBeRead) {
  using std::filesystem::perms;
  folder_.add_file("closed/orders.mdb");
  folder_.add_file("listed/orders.mdb");
  constexpr perms kAllRead = perms::owner_read | perms::group_read | perms::others_read;
  constexpr perms kAllEnter = perms::owner_exec | perms::group_exec | perms::others_exec;
  std::filesystem::permissions(folder_.path(), kAllRead | kAllEnter | perms::owner_write);
  std::filesystem::permissions(folder_.path() / "closed", perms::none);
  std::filesystem::permissions(folder_.path() / "listed", kAllRead);
  constexpr auto kRefused = static_cast<std::int32_t>(0x80040000u | EACCES);
  {
    const WithoutPrivileges nobody;
    EXPECT_HOST_ERROR(found("closed/*"), kRefused);
    EXPECT_HOST_ERROR(found("closed/orders.mdb"), kRefused);
    EXPECT_HOST_ERROR(found("listed/orders.mdb"), kRefused);
    EXPECT_EQ(found("listed/*"), false) << "what may not be looked at is no ordinary file";
  }
  std::filesystem::permissions(folder_.path() / "closed", perms::owner_all);
  std::filesystem::permissions(folder_.path() / "listed", perms::owner_all);
  EXPECT_EQ(found("closed/*"), true);
}

// What the system answers in its own place: the linker leads the calls here.
int failing_open = 0;
int failing_read = 0;

TEST_F(FileFindOnPosix, TellsAFolderThatCannotBeReadToItsEnd) {
  folder_.add_file("orders.mdb");
  failing_read = EIO;
  EXPECT_HOST_ERROR(found("*.txt"), static_cast<std::int32_t>(0x80040000u | EIO));
  failing_read = 0;
  EXPECT_EQ(found("*.txt"), false);
}

TEST_F(FileFindOnPosix, TellsTheSystemsWantOfMemoryAsItsOwn) {
  failing_open = ENOMEM;
  EXPECT_OUT_OF_MEMORY(found("*.txt"));
  failing_open = EMFILE;
  EXPECT_HOST_ERROR(found("*.txt"), static_cast<std::int32_t>(0x80040000u | EMFILE));
  failing_open = 0;
}

TEST_F(FileFindOnPosix, FailsWithTheSystemsErrorForAPathThatCannotBe) {
  const Error error = error_of(found(std::string(300, 'x')));
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), static_cast<std::int32_t>(0x80040000u | ENAMETOOLONG));
  EXPECT_TRUE(error.description().ends_with(u": File name too long"));
  EXPECT_HOST_ERROR(File_Find(u"/\xD800"s), static_cast<std::int32_t>(0x80040000u | EILSEQ));
  EXPECT_HOST_ERROR(File_Find(u"/\xDC00x"s), static_cast<std::int32_t>(0x80040000u | EILSEQ));
  EXPECT_HOST_ERROR(File_Find(u"/\xD800\xD800"s), static_cast<std::int32_t>(0x80040000u | EILSEQ));
  EXPECT_HOST_ERROR(found(std::string(300, 'x') + "/*"), static_cast<std::int32_t>(0x80040000u | ENAMETOOLONG));
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp): the linker's own names
extern "C" {

DIR* __real_opendir(const char* path);
dirent* __real_readdir(DIR* folder);

DIR* __wrap_opendir(const char* path) {
  if (failing_open == 0) return __real_opendir(path);
  errno = failing_open;
  return nullptr;
}

// Fails where the folder ends.
dirent* __wrap_readdir(DIR* folder) {
  dirent* const entry = __real_readdir(folder);
  if (entry == nullptr && failing_read != 0) errno = failing_read;
  return entry;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)

}  // namespace corvelle::testing
