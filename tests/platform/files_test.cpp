// What the product takes for granted of files and paths: calls of the system and nothing else.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

// Whether this is a Wine that is known to look for files otherwise than Windows: 8 is, 10 is not.
bool searches_otherwise() {
  using Version = const char*(CDECL*)();
  const auto version = reinterpret_cast<Version>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")));
  return version != nullptr && std::atoi(version()) < 10;
}

DWORD search_error(const std::wstring& pattern) {
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return GetLastError();
  FindClose(search);
  return ERROR_SUCCESS;
}

TEST(PlatformSearch, SaysWhatIsMissing) {
  const TemporaryFolder folder;
  folder.add_file("file");
  const std::wstring path = folder.path().wstring();
  EXPECT_EQ(search_error(path + L"\\file"), DWORD{ERROR_SUCCESS});
  EXPECT_EQ(search_error(path + L"\\missing"), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(search_error(path + L"\\missing\\file"), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_EQ(search_error(path.substr(0, 3)), DWORD{ERROR_FILE_NOT_FOUND});
}

// An older Wine takes such a path for malformed.
TEST(PlatformSearch, SaysWhereAFileStandsInAFoldersPlace) {
  const TemporaryFolder folder;
  folder.add_file("file");
  EXPECT_EQ(search_error(folder.path().wstring() + L"\\file\\*"),
            searches_otherwise() ? DWORD{ERROR_INVALID_NAME} : DWORD{ERROR_DIRECTORY});
}

// The rules of file systems older than long names.
TEST(PlatformSearch, TakesWildcardsAsEver) {
  const TemporaryFolder folder;
  folder.add_file("plain");
  folder.add_file("dotted.txt");
  const auto found = [&](const std::wstring& pattern) {
    return search_error(folder.path().wstring() + L"\\" + pattern) == ERROR_SUCCESS;
  };
  for (const wchar_t* pattern : {L"plain*", L"pl*.*", L"pl*.", L"plain. ", L"plain.", L"pla?n", L"d*.t?t"}) {
    EXPECT_TRUE(found(pattern)) << pattern;
  }
  for (const wchar_t* pattern : {L"plai", L"?plain", L"p*.txt", L"*.tx"}) EXPECT_FALSE(found(pattern)) << pattern;
  EXPECT_NE(found(L"plain?"), searches_otherwise());
  EXPECT_EQ(found(L"d*."), searches_otherwise());
}

TEST(PlatformSearch, EndsWithNoMoreFiles) {
  const TemporaryFolder folder;
  folder.add_file("one.txt");
  folder.add_file("two.txt");
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW((folder.path().wstring() + L"\\*.txt").c_str(), &entry);
  ASSERT_NE(search, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(FindNextFileW(search, &entry));
  EXPECT_FALSE(FindNextFileW(search, &entry));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
  EXPECT_TRUE(FindClose(search));
}

TEST(PlatformPath, SaysTheLengthItNeedsWithItsNul) {
  const std::wstring path = L"C:\\folder\\.\\other\\..\\file";
  const std::wstring full = L"C:\\folder\\file";
  std::wstring buffer(full.size(), L'x');  // one too few
  EXPECT_EQ(GetFullPathNameW(path.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr), full.size() + 1);
  buffer.resize(full.size() + 1);
  ASSERT_EQ(GetFullPathNameW(path.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr), full.size());
  EXPECT_EQ(buffer.substr(0, full.size()), full);
}

TEST(PlatformPath, OfAnyLengthIsTakenBehindItsMark) {
  const TemporaryFolder folder;
  std::wstring path = L"\\\\?\\" + folder.path().wstring();
  for (int i = 0; i < 3; ++i) {
    path += L"\\" + std::wstring(100, L'n');
    ASSERT_TRUE(CreateDirectoryW(path.c_str(), nullptr));
  }
  EXPECT_GT(path.size(), std::size_t{MAX_PATH});
  EXPECT_EQ(search_error(path), DWORD{ERROR_SUCCESS});
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(RemoveDirectoryW(path.c_str()));
    path.resize(path.rfind(L'\\'));
  }
}

TEST(PlatformPath, HasNoAttributesWhereNothingIs) {
  const TemporaryFolder folder;
  EXPECT_NE(GetFileAttributesW(folder.path().c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW((folder.path() / "missing").c_str()), INVALID_FILE_ATTRIBUTES);
}

// A file that is open for the length of a test.
class OpenFile {
 public:
  OpenFile(const std::wstring& path, DWORD access)
      : handle_(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr)) {}
  ~OpenFile() { CloseHandle(handle_); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  HANDLE handle() const { return handle_; }

 private:
  HANDLE handle_;
};

TEST(PlatformFile, HasOneIdentityHoweverItIsNamed) {
  const TemporaryFolder folder;
  const std::wstring path = folder.add_file("file").wstring();
  const std::wstring other = folder.add_file("other").wstring();
  const auto identity_of = [](const std::wstring& name) {
    const OpenFile file(name, 0);  // without access to the content
    BY_HANDLE_FILE_INFORMATION found = {};
    EXPECT_TRUE(GetFileInformationByHandle(file.handle(), &found));
    return std::tuple(found.dwVolumeSerialNumber, found.nFileIndexHigh, found.nFileIndexLow);
  };
  EXPECT_EQ(identity_of(path), identity_of(L"\\\\?\\" + path));
  EXPECT_EQ(identity_of(path), identity_of(folder.path().wstring() + L"\\.\\FILE"));
  EXPECT_NE(identity_of(path), identity_of(other));
}

TEST(PlatformFile, IsReadAtAnyPlaceAndHasASize) {
  const TemporaryFolder folder;
  const auto path = folder.path() / "file";
  std::ofstream(path) << "0123456789";
  const OpenFile file(path.wstring(), GENERIC_READ);
  EXPECT_EQ(GetFileType(file.handle()), DWORD{FILE_TYPE_DISK});
  LARGE_INTEGER size = {};
  ASSERT_TRUE(GetFileSizeEx(file.handle(), &size));
  EXPECT_EQ(size.QuadPart, 10);
  OVERLAPPED place = {};
  place.Offset = 7;
  char bytes[3] = {};
  DWORD read = 0;
  ASSERT_TRUE(ReadFile(file.handle(), bytes, 3, &read, &place));
  EXPECT_EQ(std::string(bytes, read), "789");
}

TEST(PlatformFile, IsNoDiskFileWhereItIsADeviceOrAPipe) {
  const OpenFile device(L"NUL", GENERIC_READ);
  EXPECT_EQ(GetFileType(device.handle()), DWORD{FILE_TYPE_CHAR});
  HANDLE ends[2] = {};
  ASSERT_TRUE(CreatePipe(&ends[0], &ends[1], nullptr, 0));
  EXPECT_EQ(GetFileType(ends[0]), DWORD{FILE_TYPE_PIPE});
  DWORD mode = 0;
  EXPECT_FALSE(GetConsoleMode(ends[1], &mode));
  for (const HANDLE end : ends) CloseHandle(end);
}

TEST(PlatformMessage, IsThatOfTheErrorOrNone) {
  wchar_t text[512] = {};
  constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  EXPECT_GT(FormatMessageW(kFlags, nullptr, ERROR_FILE_NOT_FOUND, 0, text, 512, nullptr), 0U);
  EXPECT_EQ(FormatMessageW(kFlags, nullptr, 0x2ABCDEF, 0, text, 512, nullptr), 0U);
  // One with a place for a text, and none given.
  EXPECT_GT(FormatMessageW(kFlags, nullptr, ERROR_BAD_EXE_FORMAT, 0, text, 512, nullptr), 0U);
  EXPECT_NE(std::wstring(text).find(L"%1"), std::wstring::npos);
}

TEST(PlatformErrorMode, IsGivenBackAndAThreadsOwn) {
  const UINT before = SetErrorMode(SEM_FAILCRITICALERRORS);
  EXPECT_EQ(SetErrorMode(before), UINT{SEM_FAILCRITICALERRORS});
  using SetMode = BOOL(WINAPI*)(DWORD, DWORD*);
  const auto set = reinterpret_cast<SetMode>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetThreadErrorMode")));
  if (set == nullptr) return;  // before Windows 7
  DWORD former = 0;
  ASSERT_TRUE(set(SEM_FAILCRITICALERRORS, &former));
  DWORD own = 0;
  ASSERT_TRUE(set(former, &own));
  EXPECT_EQ(own, DWORD{SEM_FAILCRITICALERRORS});
}

}  // namespace
}  // namespace corvelle::testing
