#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "base/slice.h"
#include "data/file_find.h"
#include "data/path_windows.h"
#include "tests/support/loaded_image.h"
#include "tests/support/runtime_error.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using namespace std::string_literals;

class FileFindOnWindows : public ::testing::Test {
 protected:
  Result<bool> found(const std::wstring& name) { return File_Find((folder_.path() / name).u16string()); }
  void add_file(const std::wstring& name, DWORD attributes) {
    ASSERT_TRUE(SetFileAttributesW(folder_.add_file(name).c_str(), attributes));
  }

  TemporaryFolder folder_;
};

TEST_F(FileFindOnWindows, CountsReadOnlyAndArchiveFiles) {
  add_file(L"read-only.mdb", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(found(L"read-only.mdb"), true);
  SetFileAttributesW((folder_.path() / L"read-only.mdb").c_str(), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(found(L"read-only.mdb"), true);
}

TEST_F(FileFindOnWindows, PassesOverHiddenAndSystemFiles) {
  add_file(L"a hidden.mdb", FILE_ATTRIBUTE_HIDDEN);
  add_file(L"b system.mdb", FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(found(L"a hidden.mdb"), false);
  EXPECT_EQ(found(L"b system.mdb"), false);
  EXPECT_EQ(found(L"*.mdb"), false);
  add_file(L"c.mdb", FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(found(L"*.mdb"), true) << "the search goes on to the first file that counts";
}

TEST_F(FileFindOnWindows, TakesNamesWithoutRegardToCaseAndBothSeparators) {
  folder_.add_file("Orders.mdb");
  EXPECT_EQ(found(L"oRDERS.MDB"), true);
  std::u16string path = (folder_.path() / "Orders.mdb").u16string();
  std::replace(path.begin(), path.end(), u'\\', u'/');
  EXPECT_EQ(File_Find(path), true);
}

TEST_F(FileFindOnWindows, IsFalseForDrives) {
  EXPECT_EQ(File_Find(u"C:"), false);
  EXPECT_EQ(File_Find(u"C:\\"), false);
  EXPECT_EQ(File_Find(u"Q:\\orders.mdb"), false) << "there is no such drive";
}

TEST_F(FileFindOnWindows, ChangesNothingInTheFolder) {
  const std::filesystem::path file = folder_.add_file(L"data/orders.mdb");
  const auto state = [&] {
    return std::pair(std::filesystem::last_write_time(file), std::filesystem::last_write_time(file.parent_path()));
  };
  const auto before = state();
  EXPECT_EQ(found(L"data/*.mdb"), true);
  EXPECT_EQ(found(L"data/*.txt"), false);
  EXPECT_EQ(found(L"data/missing.mdb"), false);
  EXPECT_EQ(state(), before);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file.parent_path()), {}), 1);
}

// Wine takes long paths in any form, the system does not; so the form is tested by itself.
TEST(LongPath, HasThePrefixOfItsKind) {
  EXPECT_EQ(long_path(u"C:\\data\\a.mdb"), u"\\\\?\\C:\\data\\a.mdb");
  EXPECT_EQ(long_path(u"\\\\server\\share\\a.mdb"), u"\\\\?\\UNC\\server\\share\\a.mdb");
}

TEST(LongPath, LeavesWhatHasAPrefixAlready) {
  EXPECT_EQ(long_path(u"\\\\?\\C:\\data\\a.mdb"), u"\\\\?\\C:\\data\\a.mdb");
  EXPECT_EQ(long_path(u"\\\\?\\UNC\\server\\a.mdb"), u"\\\\?\\UNC\\server\\a.mdb");
  EXPECT_EQ(long_path(u"\\\\.\\PhysicalDrive0"), u"\\\\.\\PhysicalDrive0");
}

TEST_F(FileFindOnWindows, FindsFilesBehindLongPaths) {
  std::wstring path = L"\\\\?\\" + folder_.path().wstring();
  for (int depth = 0; depth < 6; ++depth) {
    path += L"\\" + std::wstring(60, L'深');
    ASSERT_TRUE(CreateDirectoryW(path.c_str(), nullptr));
  }
  const std::wstring file = path + L"\\订单.mdb";
  const HANDLE handle =
      CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  CloseHandle(handle);

  const auto text = [](const std::wstring& wide) { return std::u16string(wide.begin(), wide.end()); };
  EXPECT_EQ(File_Find(text(file)), true) << "in the long form already";
  EXPECT_EQ(File_Find(text(file.substr(4))), true) << "as people write it";
  EXPECT_EQ(File_Find(text(path.substr(4) + L"\\*.mdb")), true);
  EXPECT_EQ(File_Find(text(path.substr(4) + L"\\*.txt")), false);
  EXPECT_EQ(File_Find(text(path.substr(4))), false);

  DeleteFileW(file.c_str());
  for (; path.size() > 4 + folder_.path().wstring().size(); path.resize(path.rfind(L'\\'))) {
    RemoveDirectoryW(path.c_str());
  }
}

TEST_F(FileFindOnWindows, HoldsNothingOpen) {
  folder_.add_file("data/orders.mdb");
  EXPECT_EQ(found(L"data/*.mdb"), true);
  EXPECT_EQ(found(L"data/*.txt"), false);
  EXPECT_TRUE(DeleteFileW((folder_.path() / "data/orders.mdb").c_str()));
  EXPECT_TRUE(RemoveDirectoryW((folder_.path() / "data").c_str()));
}

TEST_F(FileFindOnWindows, LeavesTheThreadsErrorModeAsItWas) {
  const auto kernel = GetModuleHandleW(L"kernel32.dll");
  const auto mode =
      reinterpret_cast<DWORD(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(kernel, "GetThreadErrorMode")));
  ASSERT_NE(mode, nullptr);
  const DWORD before = mode();
  EXPECT_EQ(found(L"*.mdb"), false);
  EXPECT_HOST_ERROR(File_Find(u"C:\\no such?\\orders.mdb"), HRESULT_FROM_WIN32(ERROR_INVALID_NAME));
  EXPECT_EQ(mode(), before);
}

TEST_F(FileFindOnWindows, FailsWithTheSystemsCodeAndMessageForAMalformedPath) {
  const std::u16string path = u"C:\\no such?\\orders.mdb";
  const Error error = error_of(File_Find(path));
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), HRESULT_FROM_WIN32(ERROR_INVALID_NAME));
  const std::u16string beginning = u"File_Find: FilePath \"" + path + u"\": ";
  EXPECT_TRUE(error.description().starts_with(beginning));
  EXPECT_GT(error.description().size(), beginning.size()) << "the system has something to say";
  EXPECT_GT(error.description().back(), u' ');
  EXPECT_HOST_ERROR(File_Find(u"C:\\x\0y"s), HRESULT_FROM_WIN32(ERROR_INVALID_NAME));
}

// What the system's search is asked for, and what it answers in the system's place: an ordinary file for all.
std::vector<std::wstring> searched;

HANDLE WINAPI find_everything(LPCWSTR pattern, WIN32_FIND_DATAW* entry) {
  searched.emplace_back(pattern);
  const HANDLE search = FindFirstFileExW(L"C:\\*", FindExInfoStandard, entry, FindExSearchNameMatch, nullptr, 0);
  entry->dwFileAttributes = FILE_ATTRIBUTE_ARCHIVE;
  return search;
}

// Every name is found, as devices are by Windows.
class FileFindOfEverything : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(search_.found());
    searched.clear();
  }

  ReplacedImport search_{GetModuleHandleW(nullptr), "FindFirstFileW", reinterpret_cast<void*>(&find_everything)};
};

TEST_F(FileFindOfEverything, AsksTheSystemForNoDevice) {
  for (const char16_t* device : {u"NUL",
                                 u"nul",
                                 u" Con ",
                                 u"PRN",
                                 u"AUX",
                                 u"COM1",
                                 u"com9",
                                 u"LPT1",
                                 u"COM¹",
                                 u"LPT³",
                                 u"NUL:",
                                 u"C:nul",
                                 u"C:\\data\\nul",
                                 u"C:/data/nul",
                                 u"C:\\data\\NUL.txt",
                                 u"com1.tar.gz",
                                 u"NUL .txt",
                                 u"nul:stream",
                                 u"\\\\server\\share\\LPT2",
                                 u"conin$",
                                 u"CONOUT$",
                                 u"\\\\.\\NUL",
                                 u"\\\\.\\pipe\\orders",
                                 u"//./com1",
                                 u"\\\\.\\C:\\data\\nul"}) {
    EXPECT_EQ(File_Find(device), false) << std::filesystem::path(device);
  }
  EXPECT_TRUE(searched.empty());
}

TEST_F(FileFindOfEverything, TakesNamesThatOnlyBeginLikeADevice) {
  const std::u16string_view names[] = {
      u"NULL",    u"nul_.txt",       u"COM",   u"COM0", u"COM10",          u"COMX",           u"LPTA",
      u"CONTROL", u"C:\\nul\\a.mdb", u"a.nul", u"NU",   u"C:\\data\\con?", u"\\\\?\\C:\\nul", u"\\\\.\\C:\\a.mdb"};
  for (const std::u16string_view name : names) {
    EXPECT_EQ(File_Find(name), true) << std::filesystem::path(name);
  }
  EXPECT_EQ(searched.size(), std::size(names));
}

// The system would open a folder of that name, or take the character for a wildcard of its own.
TEST_F(FileFindOfEverything, RefusesWildcardsOfOthersAndInFolders) {
  for (const char16_t* path :
       {u"C:\\data\\<.mdb", u"C:\\data\\a>.mdb", u"a\"b.mdb", u"<", u"C:\\d<\\a.mdb", u"orders.*/", u"orders.?\\",
        u"C:\\no such?\\a.mdb", u"C:/dat*/a.mdb", u"\\\\?\\C:\\d*\\a.mdb", u"\\\\?\\C:\\d\\a\"", u"*\\*.mdb"}) {
    SCOPED_TRACE(std::filesystem::path(path).string());
    EXPECT_HOST_ERROR(File_Find(path), HRESULT_FROM_WIN32(ERROR_INVALID_NAME));
  }
  EXPECT_TRUE(searched.empty());
  for (const char16_t* path : {u"\\\\?\\C:\\data\\*.mdb", u"C:*.mdb", u"C:\\data\\a?.mdb"}) {
    EXPECT_EQ(File_Find(path), true) << std::filesystem::path(path);
  }
}

TEST_F(FileFindOfEverything, AsksForLongPatternsAsTheyAreWritten) {
  const std::u16string folder = u"C:\\" + std::u16string(260, u'd') + u"\\";
  const std::wstring long_folder = L"\\\\?\\" + std::wstring(folder.begin(), folder.end());
  for (const char16_t* name : {u"*.", u"orders?.", u"*.*", u"a*. ", u"*.mdb"}) {
    EXPECT_EQ(File_Find(folder + name), true);
    const std::u16string kept(trimmed(name));
    EXPECT_EQ(searched.back(), long_folder + std::wstring(kept.begin(), kept.end()));
  }
  EXPECT_EQ(File_Find(folder + u"orders.mdb."), true);
  EXPECT_EQ(searched.back(), long_folder + L"orders.mdb") << "the system drops the point of a name";
}

TEST_F(FileFindOfEverything, RefusesAPathThatNoSystemCanCount) {
  const auto path_of = [](std::size_t length) {
    std::u16string path = u"\\\\?\\C:\\a.mdb";
    return path.insert(7, length - path.size(), u'\\');
  };
  EXPECT_EQ(File_Find(path_of(32766)), true);
  EXPECT_EQ(File_Find(path_of(32767)), true);
  EXPECT_EQ(searched.size(), 2u);
  for (const std::size_t length : {32768, 65533, 65534, 65535, 65536, 131072}) {
    EXPECT_HOST_ERROR(File_Find(path_of(length)), HRESULT_FROM_WIN32(ERROR_INVALID_NAME));
    EXPECT_HOST_ERROR(File_Find(path_of(length + 4).substr(4)), HRESULT_FROM_WIN32(ERROR_INVALID_NAME));
  }
  EXPECT_EQ(searched.size(), 2u);
}

// --- answers that this system does not give by itself -------------------------------------------------------------

// What the system's search answers: entries with these attributes, or failure with this code.
struct PlannedSearch {
  std::vector<DWORD> attributes;
  DWORD code = ERROR_NO_MORE_FILES;
  std::size_t given = 0;
};
PlannedSearch planned;

BOOL WINAPI give_next(HANDLE /*search*/, WIN32_FIND_DATAW* entry) {
  if (planned.given == planned.attributes.size()) {
    SetLastError(planned.code);
    return FALSE;
  }
  *entry = {};
  entry->dwFileAttributes = planned.attributes[planned.given++];
  return TRUE;
}

HANDLE WINAPI give_first(LPCWSTR /*pattern*/, WIN32_FIND_DATAW* entry) {
  return give_next(nullptr, entry) != FALSE ? reinterpret_cast<HANDLE>(1) : INVALID_HANDLE_VALUE;
}

BOOL WINAPI end_search(HANDLE /*search*/) { return TRUE; }

class PlannedFileFind : public ::testing::Test {
 protected:
  static Result<bool> finds(std::vector<DWORD> attributes) {
    planned = {.attributes = std::move(attributes)};
    return File_Find(u"C:\\data\\*.mdb");
  }
  static void fail_with(DWORD code) { planned = {.attributes = {}, .code = code}; }

  ReplacedImport first_{GetModuleHandleW(nullptr), "FindFirstFileW", reinterpret_cast<void*>(&give_first)};
  ReplacedImport next_{GetModuleHandleW(nullptr), "FindNextFileW", reinterpret_cast<void*>(&give_next)};
  ReplacedImport close_{GetModuleHandleW(nullptr), "FindClose", reinterpret_cast<void*>(&end_search)};
};

TEST_F(PlannedFileFind, CountsOrdinaryFilesAlone) {
  constexpr DWORD kVolumeLabel = 0x8;
  constexpr DWORD kPassedOver = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY | kVolumeLabel;
  ASSERT_TRUE(first_.found() && next_.found() && close_.found());
  for (DWORD attributes = 0; attributes < 0x1000; ++attributes) {
    ASSERT_EQ(finds({attributes}), (attributes & kPassedOver) == 0) << std::hex << attributes;
  }
  EXPECT_EQ(finds({kVolumeLabel, FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE}), false);
  EXPECT_EQ(finds({kVolumeLabel, FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_READONLY}), true);
}

TEST_F(PlannedFileFind, TakesOnlyAMissingNameForNoMatch) {
  for (const DWORD code : {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_NO_MORE_FILES, ERROR_DIRECTORY}) {
    fail_with(code);
    EXPECT_EQ(File_Find(u"C:\\data\\*.mdb"), false) << code;
  }
  for (const DWORD code :
       {ERROR_ACCESS_DENIED, ERROR_NOT_READY, ERROR_INVALID_NAME, ERROR_BAD_NETPATH, ERROR_BAD_NET_NAME,
        ERROR_INVALID_DRIVE, ERROR_SHARING_VIOLATION, ERROR_FILENAME_EXCED_RANGE}) {
    fail_with(code);
    EXPECT_HOST_ERROR(File_Find(u"C:\\data\\*.mdb"), HRESULT_FROM_WIN32(code));
  }
}

TEST_F(PlannedFileFind, FailsWhereTheSearchBreaksOff) {
  planned = {.attributes = {FILE_ATTRIBUTE_DIRECTORY}, .code = ERROR_NETNAME_DELETED};
  EXPECT_HOST_ERROR(File_Find(u"C:\\data\\*.mdb"), HRESULT_FROM_WIN32(ERROR_NETNAME_DELETED));
}

// --- Windows before 7, which has no error mode of a thread --------------------------------------------------------

FARPROC WINAPI find_nothing(HMODULE /*module*/, LPCSTR /*name*/) { return nullptr; }

UINT process_error_mode() {
  const UINT mode = SetErrorMode(0);
  SetErrorMode(mode);
  return mode;
}

UINT mode_in_search = 0;
HANDLE WINAPI note_error_mode(LPCWSTR /*pattern*/, WIN32_FIND_DATAW* /*entry*/) {
  mode_in_search = process_error_mode();
  SetLastError(ERROR_FILE_NOT_FOUND);
  return INVALID_HANDLE_VALUE;
}

TEST(FileFindOnOldWindows, AsksForNoDiskAndLeavesTheProcessAsItWas) {
  const ReplacedImport names(GetModuleHandleW(nullptr), "GetProcAddress", reinterpret_cast<void*>(&find_nothing));
  const ReplacedImport search(GetModuleHandleW(nullptr), "FindFirstFileW", reinterpret_cast<void*>(&note_error_mode));
  ASSERT_TRUE(names.found() && search.found());
  const UINT before = SetErrorMode(SEM_NOGPFAULTERRORBOX);
  for (const UINT mode : {0u, UINT{SEM_NOGPFAULTERRORBOX}, UINT{SEM_FAILCRITICALERRORS}}) {
    SetErrorMode(mode);
    EXPECT_EQ(File_Find(u"A:\\*.mdb"), false);
    EXPECT_EQ(mode_in_search, mode | SEM_FAILCRITICALERRORS);
    EXPECT_EQ(process_error_mode(), mode);
  }
  SetErrorMode(before);
}

}  // namespace
}  // namespace corvelle::testing
