// Files at paths that somebody else wrote down: what is no ordinary file is not waited for, and a huge one not read.

#include "console/disk_file.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <random>
#include <string>

#include "component/class_description.h"
#include "component/registration_keys.h"
#include "console/dll_file.h"
#include "tests/component/registration/machine.h"
#include "tests/console/clean_machine.h"
#include "tests/console/files.h"
#include "tests/console/tool.h"
#include "tests/support/component_file.h"
#include "tests/support/loaded_image.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using namespace std::chrono_literals;
using console::bitness_of;
using console::DiskFile;
using console::is_full_path;
using console::same_content;

constexpr std::int64_t kHuge = 3'900'000'000;

// Makes the file longer without writing: it takes no place on the disk, where the disk can do so.
void lengthen(const std::wstring& path, std::int64_t size) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  constexpr DWORD kSetSparse = 0x900C4;  // FSCTL_SET_SPARSE
  DWORD returned = 0;
  DeviceIoControl(file, kSetSparse, nullptr, 0, nullptr, 0, &returned, nullptr);
  LARGE_INTEGER end = {};
  end.QuadPart = size;
  EXPECT_TRUE(SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file));
  CloseHandle(file);
}

class DiskFiles : public CleanMachine {
 protected:
  std::wstring file(const std::string& name, std::string_view bytes) const {
    const std::wstring path = (folder_.path() / name).wstring();
    write(path, bytes);
    return path;
  }

  const TemporaryFolder folder_;
};

// An end of a pipe that never says anything.
class SilentPipe {
 public:
  explicit SilentPipe(const std::wstring& name)
      : handle_(CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 10, 0, 0, 0, nullptr)) {
    EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
  }
  ~SilentPipe() { CloseHandle(handle_); }
  SilentPipe(const SilentPipe&) = delete;
  SilentPipe& operator=(const SilentPipe&) = delete;

 private:
  HANDLE handle_;
};

TEST(FullPaths, LeadToOnePlaceThatIsNoDevice) {
  for (const wchar_t* path : {L"C:\\a.dll", L"z:\\", L"\\\\server\\share\\a.dll", L"\\\\?\\C:\\a.dll",
                              L"\\\\?\\UNC\\server\\share\\a.dll", L"C:\\pipe\\a.dll"}) {
    EXPECT_TRUE(is_full_path(path)) << std::string(path, path + std::wcslen(path));
  }
  for (const wchar_t* path : {L"",
                              L"a.dll",
                              L".\\a.dll",
                              L"\\a.dll",
                              L"C:a.dll",
                              L"C:",
                              L"1:\\a.dll",
                              L"NUL",
                              L"CON",
                              L"COM1:",
                              L"\\\\.\\pipe\\a",
                              L"\\\\.\\C:",
                              L"\\\\.\\C:\\a.dll",
                              L"\\\\?\\pipe\\a",
                              L"\\\\?\\GLOBALROOT\\Device\\a",
                              L"\\\\server\\pipe\\a",
                              L"\\\\server\\PIPE\\a",
                              L"\\\\server\\mailslot\\a",
                              L"\\\\?\\UNC\\server\\pipe\\a",
                              L"\\\\server",
                              L"\\\\\\share\\a",
                              L"//./pipe/a",
                              L"\\\\./pipe/a",
                              L"\\\\server\\pipe/a",
                              L"script:C:\\a",
                              L"C:\\a.dll\" more"}) {
    EXPECT_FALSE(is_full_path(path)) << std::string(path, path + std::wcslen(path));
  }
}

TEST_F(DiskFiles, AreReadOnlyWithinTheirEnds) {
  const DiskFile found(file("ten", "0123456789"));
  EXPECT_EQ(found.size(), 10u);
  char bytes[4] = {};
  EXPECT_TRUE(found.read(6, &bytes));
  EXPECT_EQ(std::string_view(bytes, 4), "6789");
  EXPECT_FALSE(found.read(7, &bytes));
  EXPECT_FALSE(found.read(11, &bytes));
  EXPECT_FALSE(found.read(UINT64_MAX - 1, &bytes));
}

TEST_F(DiskFiles, AreNoFoldersDevicesOrPipes) {
  const SilentPipe pipe(L"\\\\.\\pipe\\corvelle test");
  const std::wstring folder = folder_.path().wstring();
  for (const std::wstring& path : {folder, folder + L"\\NUL", folder + L"\\missing", file("empty", ""),
                                   std::wstring(L"\\\\.\\pipe\\corvelle test"), std::wstring(L"NUL")}) {
    const DiskFile found(path);
    char byte = 0;
    EXPECT_EQ(found.size(), 0u);
    EXPECT_FALSE(found.read(0, &byte));
    EXPECT_EQ(bitness_of(path), std::nullopt);
    EXPECT_FALSE(same_content(path, path));
  }
}

// Where the system lets a pipe have an ordinary path, by a letter for a drive, its type still tells it.
TEST_F(DiskFiles, AreNoPipesByAnotherName) {
  const SilentPipe pipe(L"\\\\.\\pipe\\corvelle test");
  ASSERT_TRUE(DefineDosDeviceW(DDD_RAW_TARGET_PATH, L"Q:", L"\\Device\\NamedPipe"));
  EXPECT_EQ(DiskFile(L"Q:\\corvelle test").size(), 0u);
  DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_RAW_TARGET_PATH, L"Q:", L"\\Device\\NamedPipe");
}

DWORD type_of_file = FILE_TYPE_DISK;
DWORD WINAPI file_type(HANDLE /*file*/) { return type_of_file; }

// A pipe may say that it has bytes to read, as many as there are in it just now.
TEST_F(DiskFiles, AreWhatTheSystemCallsThat) {
  const std::wstring path = file("ten", "0123456789");
  const ReplacedImport import(GetModuleHandleW(nullptr), "GetFileType", reinterpret_cast<void*>(file_type));
  ASSERT_TRUE(import.found());
  for (const DWORD type : {FILE_TYPE_DISK, FILE_TYPE_PIPE, FILE_TYPE_CHAR, FILE_TYPE_UNKNOWN, FILE_TYPE_REMOTE}) {
    type_of_file = type;
    EXPECT_EQ(DiskFile(path).size(), type == FILE_TYPE_DISK ? 10u : 0u) << type;
  }
}

TEST_F(DiskFiles, AreNotTakenFromTheCurrentFolder) {
  file("ten", "0123456789");
  wchar_t before[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, before);
  SetCurrentDirectoryW(folder_.path().c_str());
  EXPECT_EQ(GetFileAttributesW(L"ten") & FILE_ATTRIBUTE_DIRECTORY, 0u);
  EXPECT_EQ(DiskFile(L"ten").size(), 0u);
  EXPECT_FALSE(console::exists(L"ten"));
  SetCurrentDirectoryW(before);
}

TEST_F(DiskFiles, AreTheSameOnlyByteForByte) {
  const std::string bytes(200'000, 'a');
  std::string other = bytes;
  other.back() = 'b';
  const std::wstring one = file("one", bytes);
  EXPECT_TRUE(same_content(one, file("same", bytes)));
  EXPECT_FALSE(same_content(one, file("another", other)));
  EXPECT_FALSE(same_content(one, file("shorter", bytes.substr(1))));
  EXPECT_FALSE(same_content(one, (folder_.path() / "missing").wstring()));
}

// The headers of a DLL at random wrong: an answer, whatever it is, and a right one for those that stayed.
TEST_F(DiskFiles, OfAnyHeadersHaveABitnessOrNone) {
  std::mt19937 random(20060630);
  const std::string built = content_of(built_dll(kOwnBitness)).substr(0, 4096);
  const auto expected = sizeof(void*) == 8 ? console::Bitness::k64 : console::Bitness::k32;
  EXPECT_EQ(bitness_of(file("built", built)), expected);
  for (const LONG start : {-1L, -64L, LONG_MIN, LONG_MAX, 4095L, 4096L, 4000L}) {
    std::string bytes = built;
    std::memcpy(&bytes[offsetof(IMAGE_DOS_HEADER, e_lfanew)], &start, sizeof(start));
    EXPECT_EQ(bitness_of(file("moved", bytes)), std::nullopt) << start;
  }
  for (int round = 0; round < 300; ++round) {
    std::string bytes = built.substr(0, random() % built.size());
    for (int changes = 0; changes < 3 && !bytes.empty(); ++changes) {
      bytes[random() % std::min<std::size_t>(bytes.size(), 300)] = static_cast<char>(random());
    }
    const auto found = bitness_of(file("changed", bytes));
    EXPECT_TRUE(!found || bytes.size() > sizeof(IMAGE_DOS_HEADER) + sizeof(IMAGE_NT_HEADERS32));
  }
}

TEST_F(DiskFiles, OfAnySizeAreLookedAtQuickly) {
  const std::wstring dll = file("huge.dll", content_of(built_dll(kOwnBitness)));
  lengthen(dll, kHuge);
  ASSERT_EQ(DiskFile(dll).size(), static_cast<std::uint64_t>(kHuge));
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_NE(bitness_of(dll), std::nullopt);
  EXPECT_FALSE(same_content(dll, built_dll(kOwnBitness)));
  EXPECT_LT(std::chrono::steady_clock::now() - begun, 1s);
}

// The doctor, where such a path is registered.
class RegisteredPath : public DiskFiles {
 protected:
  // What it says, soon.
  static std::string said_of(const std::wstring& path, DWORD status = 1) {
    EXPECT_EQ(ComponentFile(built_dll(kOwnBitness)).register_server(), S_OK);
    for (const ClassDescription* description : kClasses) {
      set_default(HKEY_LOCAL_MACHINE, std::wstring(server_key(*description)), path);
    }
    const auto begun = std::chrono::steady_clock::now();
    const ToolRun run =
        run_tool({L"doctor", L"--language", L"en", L"--bitness", kOwnBitness == Bitness::k32 ? L"32" : L"64"});
    EXPECT_LT(std::chrono::steady_clock::now() - begun, 10s);
    EXPECT_EQ(run.status, status) << run.out;
    EXPECT_EQ(run.error, "");
    return run.out;
  }
};

TEST_F(RegisteredPath, OfAHugeFileIsExamined) {
  const std::wstring dll = file("huge.dll", content_of(built_dll(kOwnBitness)));
  lengthen(dll, kHuge);
  // Its type library needs the whole file in memory, for which 32-bit programs have no room.
  EXPECT_NE(said_of(dll, kOwnBitness == Bitness::k64 ? 0 : 1).find("It is another version"), std::string::npos);
  const std::wstring zeros = file("zeros.dll", "MZ");
  lengthen(zeros, kHuge);
  EXPECT_NE(said_of(zeros).find("PROBLEM: The registered file is no DLL"), std::string::npos);
}

TEST_F(RegisteredPath, OfNoOrdinaryFileIsAProblem) {
  const SilentPipe pipe(L"\\\\.\\pipe\\corvelle test");
  const std::wstring folder = folder_.path().wstring();
  for (const std::wstring& path : {folder, folder + L"\\NUL", file("empty.dll", "")}) {
    EXPECT_NE(said_of(path).find("PROBLEM: The registered file is "), std::string::npos);
  }
  for (const wchar_t* path : {L"\\\\.\\pipe\\corvelle test", L"NUL", L"CON", L"Corvelle.dll", L"", L"\\\\.\\C:"}) {
    EXPECT_NE(said_of(path).find("PROBLEM: The registration is incomplete"), std::string::npos);
  }
}

}  // namespace
}  // namespace corvelle::testing
