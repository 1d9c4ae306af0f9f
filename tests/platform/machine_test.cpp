// What the product takes for granted of the machine, its settings, modules, threads and processes: calls of the system
// and nothing else.
#include <windows.h>

#include <gtest/gtest.h>
#include <shellapi.h>

#include <cwchar>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace corvelle::testing {
namespace {

TEST(PlatformName, IsCountedWithoutItsNul) {
  char name[250] = {};
  DWORD size = sizeof(name);
  ASSERT_TRUE(GetComputerNameA(name, &size));
  EXPECT_EQ(std::string(name).size(), size);
  EXPECT_LE(size, DWORD{MAX_COMPUTERNAME_LENGTH});
}

TEST(PlatformName, IsNotWrittenWhereItDoesNotFit) {
  char name[250] = {};
  DWORD size = 0;
  EXPECT_FALSE(GetComputerNameA(name, &size));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_BUFFER_OVERFLOW});
  EXPECT_EQ(name[0], '\0');
}

// A buffer is converted whole, what is behind the first NUL, too.
TEST(PlatformCodePage, MakesEachNulOne) {
  const char bytes[6] = {'a', '\0', 'b', '\0', '\0', 'c'};
  wchar_t units[6] = {L'x', L'x', L'x', L'x', L'x', L'x'};
  ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, bytes, 6, units, 6), 6);
  EXPECT_EQ(std::wstring(units, 6), std::wstring(L"a\0b\0\0c", 6));
}

TEST(PlatformCodePage, Utf8ThereAndBack) {
  const std::wstring text = L"a\u00E9\u4E2D\xD83D\xDE00";
  char bytes[32] = {};
  const int length = static_cast<int>(text.size());
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr), 10);
  ASSERT_EQ(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes, 32, nullptr, nullptr), 10);
  wchar_t units[8] = {};
  ASSERT_EQ(MultiByteToWideChar(CP_UTF8, 0, bytes, 10, units, 8), length);
  EXPECT_EQ(std::wstring(units), text);
}

TEST(PlatformCodePage, KnowsLeadBytes) {
  EXPECT_TRUE(IsDBCSLeadByteEx(936, 0xB0));
  EXPECT_FALSE(IsDBCSLeadByteEx(936, 'a'));
  EXPECT_FALSE(IsDBCSLeadByteEx(1252, 0xB0));
}

TEST(PlatformSymbols, AreCountedWithTheirNulAndFitTheirPlaces) {
  constexpr LCTYPE kTypes[] = {LOCALE_SDECIMAL,  LOCALE_STHOUSAND,      LOCALE_SNEGATIVESIGN,  LOCALE_SPOSITIVESIGN,
                               LOCALE_SCURRENCY, LOCALE_SMONDECIMALSEP, LOCALE_SMONTHOUSANDSEP};
  for (const LCTYPE type : kTypes) {
    wchar_t text[8] = {};
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 8);
    ASSERT_GT(length, 0) << type;
    EXPECT_EQ(static_cast<std::size_t>(length), std::wcslen(text) + 1) << type;
  }
}

TEST(PlatformSymbols, AreNoneWhereTheyDoNotFit) {
  wchar_t text[2] = {};
  EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, 1), 0);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

std::int64_t ticks(const SYSTEMTIME& time) {
  FILETIME ticks = {};
  EXPECT_TRUE(SystemTimeToFileTime(&time, &ticks));
  return static_cast<std::int64_t>((std::uint64_t{ticks.dwHighDateTime} << 32) | ticks.dwLowDateTime);
}

TEST(PlatformClock, ShowsTheTimeOfTheUsersZone) {
  SYSTEMTIME system = {};
  GetSystemTime(&system);
  SYSTEMTIME expected = {};
  ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(nullptr, &system, &expected));
  SYSTEMTIME local = {};
  GetLocalTime(&local);
  constexpr std::int64_t kMinute = 600'000'000;  // in units of 100 ns
  EXPECT_LT(std::abs(ticks(local) - ticks(expected)), kMinute);
}

TEST(PlatformNames, AreComparedWithoutRegardToCase) {
  EXPECT_EQ(CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, L"Corvelle", 8, L"cORVELLE", 8), CSTR_EQUAL);
  EXPECT_NE(CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, L"Corvelle", 8, L"Corvell", 7), CSTR_EQUAL);
}

TEST(PlatformModule, IsFoundByAnAddressInIt) {
  static const int here = 0;
  HMODULE module = nullptr;
  ASSERT_TRUE(GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                 reinterpret_cast<LPCWSTR>(&here), &module));
  EXPECT_EQ(module, GetModuleHandleW(nullptr));
}

TEST(PlatformModule, FillsTheBufferWhereItsPathIsCut) {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  ASSERT_LT(length, DWORD{MAX_PATH});
  wchar_t cut[MAX_PATH] = {};
  EXPECT_EQ(GetModuleFileNameW(nullptr, cut, length), length);  // one too few for the terminator
  EXPECT_EQ(GetModuleFileNameW(nullptr, cut, length + 1), length);
  EXPECT_STREQ(cut, path);
}

TEST(PlatformModule, HasNoFunctionOfAnotherName) {
  const HMODULE system = GetModuleHandleW(L"kernel32.dll");
  ASSERT_NE(system, nullptr);
  EXPECT_NE(GetProcAddress(system, "GetLastError"), nullptr);
  EXPECT_EQ(GetProcAddress(system, "NoFunctionOfThisName"), nullptr);
}

TEST(PlatformThread, HasNothingInItsSlotsAtFirst) {
  const DWORD slot = TlsAlloc();
  ASSERT_NE(slot, TLS_OUT_OF_INDEXES);
  int value = 0;
  EXPECT_EQ(TlsGetValue(slot), nullptr);
  ASSERT_TRUE(TlsSetValue(slot, &value));
  void* elsewhere = &value;
  std::thread([&] { elsewhere = TlsGetValue(slot); }).join();
  EXPECT_EQ(elsewhere, nullptr);
  EXPECT_EQ(TlsGetValue(slot), &value);
  EXPECT_TRUE(TlsFree(slot));
}

// Whoever gets a slot that another one gave back finds nothing of it.
TEST(PlatformThread, FindsNothingInASlotThatWasGivenBack) {
  int value = 0;
  const DWORD first = TlsAlloc();
  TlsSetValue(first, &value);
  TlsFree(first);
  const DWORD second = TlsAlloc();
  EXPECT_EQ(TlsGetValue(second), nullptr);
  TlsFree(second);
}

TEST(PlatformThread, EntersASectionAgainWhereItIsInside) {
  CRITICAL_SECTION section;
  ASSERT_TRUE(InitializeCriticalSectionAndSpinCount(&section, 0));
  EnterCriticalSection(&section);
  EnterCriticalSection(&section);
  LeaveCriticalSection(&section);
  bool entered = true;
  std::thread([&] { entered = TryEnterCriticalSection(&section) != FALSE; }).join();
  EXPECT_FALSE(entered);
  LeaveCriticalSection(&section);
  DeleteCriticalSection(&section);
}

TEST(PlatformThread, WaitsForACountedObject) {
  const HANDLE semaphore = CreateSemaphoreW(nullptr, 0, 1, nullptr);
  ASSERT_NE(semaphore, nullptr);
  EXPECT_EQ(WaitForSingleObject(semaphore, 0), DWORD{WAIT_TIMEOUT});
  EXPECT_TRUE(ReleaseSemaphore(semaphore, 1, nullptr));
  EXPECT_EQ(WaitForSingleObject(semaphore, 0), DWORD{WAIT_OBJECT_0});
  EXPECT_TRUE(CloseHandle(semaphore));
}

TEST(PlatformMemory, SaysAndChangesWhatMayBeDoneWithIt) {
  void* page = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READONLY);
  ASSERT_NE(page, nullptr);
  DWORD former = 0;
  EXPECT_TRUE(VirtualProtect(page, 4096, PAGE_READWRITE, &former));
  EXPECT_EQ(former, DWORD{PAGE_READONLY});
  MEMORY_BASIC_INFORMATION information = {};
  ASSERT_EQ(VirtualQuery(page, &information, sizeof(information)), sizeof(information));
  EXPECT_EQ(information.Protect, DWORD{PAGE_READWRITE});
  EXPECT_TRUE(VirtualFree(page, 0, MEM_RELEASE));
}

std::vector<std::wstring> words_of(const wchar_t* line) {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(line, &count);
  std::vector<std::wstring> result(words, words + count);
  LocalFree(words);
  return result;
}

TEST(PlatformCommandLine, IsSplitAsTheRuntimesDo) {
  EXPECT_EQ(words_of(L"tool a \"b c\" \"\" \"\\\"d\\\"\" C:\\e\\"),
            (std::vector<std::wstring>{L"tool", L"a", L"b c", L"", L"\"d\"", L"C:\\e\\"}));
}

// The word that this program is started with by the test below.
constexpr wchar_t kEndAtOnce[] = L"--gtest_list_tests";

TEST(PlatformProcess, GivesItsExitCodeOnceItHasEnded) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring line = L"\"" + std::wstring(path) + L"\" " + kEndAtOnce;
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;  // with none, so that it prints nowhere
  PROCESS_INFORMATION process = {};
  ASSERT_TRUE(CreateProcessW(path, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
  EXPECT_EQ(WaitForSingleObject(process.hProcess, 60'000), DWORD{WAIT_OBJECT_0});
  DWORD status = STILL_ACTIVE;
  EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &status));
  EXPECT_EQ(status, 0U);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

TEST(PlatformProcess, EndsWithTheCodeThatItIsEndedBy) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process = {};
  ASSERT_TRUE(
      CreateProcessW(path, nullptr, nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr, nullptr, &startup, &process));
  EXPECT_TRUE(TerminateProcess(process.hProcess, 0xC0000409));
  EXPECT_EQ(WaitForSingleObject(process.hProcess, 60'000), DWORD{WAIT_OBJECT_0});
  DWORD status = STILL_ACTIVE;
  EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &status));
  EXPECT_EQ(status, 0xC0000409);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

TEST(PlatformToken, SaysWhetherItIsElevatedAndOfWhichGroups) {
  HANDLE token = nullptr;
  ASSERT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token));
  TOKEN_ELEVATION elevation = {};
  DWORD size = 0;
  if (GetTokenInformation(token, TokenElevation, &elevation, sizeof(elevation), &size)) {
    EXPECT_EQ(size, sizeof(elevation));
  } else {
    EXPECT_LT(LOBYTE(GetVersion()), 6);  // before Windows Vista
  }
  CloseHandle(token);
  BYTE everyone[SECURITY_MAX_SID_SIZE];
  size = sizeof(everyone);
  ASSERT_TRUE(CreateWellKnownSid(WinWorldSid, nullptr, everyone, &size));
  BOOL is_member = FALSE;
  ASSERT_TRUE(CheckTokenMembership(nullptr, everyone, &is_member));
  EXPECT_TRUE(is_member);
}

}  // namespace
}  // namespace corvelle::testing
