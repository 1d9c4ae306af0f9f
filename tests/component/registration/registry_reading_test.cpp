// What others wrote to the registry, read and removed: values of any type, length and size, and keys of odd names.

#include <windows.h>

#include <gtest/gtest.h>
#include <winternl.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_windows.h"
#include "component/registration_keys.h"
#include "component/registry.h"
#include "tests/support/component_file.h"
#include "tests/support/loaded_image.h"
#include "tests/support/registry_snapshot.h"

namespace corvelle::testing {
namespace {

constexpr wchar_t kKey[] = L"key";

HKEY looked_at = nullptr;
int growths_left = 0;

void store(HKEY key, DWORD type, const std::vector<BYTE>& bytes) {
  ASSERT_EQ(RegSetValueExW(key, nullptr, 0, type, bytes.data(), static_cast<DWORD>(bytes.size())), ERROR_SUCCESS);
}

std::vector<BYTE> bytes_of_text(std::wstring_view text) {
  const auto* bytes = reinterpret_cast<const BYTE*>(text.data());
  return {bytes, bytes + text.size() * sizeof(wchar_t)};
}

// The system's own function, past this program's imports.
template <class Function>
Function systems(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

// Another program makes the value longer after each of the first looks at it.
LSTATUS WINAPI query_growing(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
  const LSTATUS result =
      systems<decltype(&RegQueryValueExW)>(L"advapi32.dll", "RegQueryValueExW")(key, name, reserved, type, data, size);
  if (growths_left > 0) {
    const int longer = 1000 * (10 - --growths_left);
    store(looked_at, REG_SZ, bytes_of_text(std::wstring(static_cast<std::size_t>(longer), L'a')));
  }
  return result;
}

UNICODE_STRING counted_name(std::wstring& name) {
  const auto bytes = static_cast<USHORT>(name.size() * sizeof(wchar_t));
  return {bytes, bytes, name.data()};
}

class RegistryReading : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(RegCreateKeyW(root_.key(), kKey, &key_), ERROR_SUCCESS);
    looked_at = key_;
    growths_left = 0;
  }
  void TearDown() override { RegCloseKey(key_); }

  static std::optional<std::wstring> read_key() {
    Text text;
    if (read_registry(kMachineClasses, kKey, L"", 0, &text) != ERROR_SUCCESS) return std::nullopt;
    return as_wide(text);
  }

  std::optional<std::wstring> read(DWORD type, const std::vector<BYTE>& bytes) const {
    store(key_, type, bytes);
    return read_key();
  }

  // Makes the key's child of any name at all, as the system's inner interface does.
  void create_child(std::wstring name) const {
    using CreateKey = NTSTATUS(NTAPI*)(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*, ULONG, UNICODE_STRING*, ULONG, ULONG*);
    UNICODE_STRING counted = counted_name(name);
    OBJECT_ATTRIBUTES attributes = {};
    InitializeObjectAttributes(&attributes, &counted, 0, key_, nullptr);
    HANDLE child = nullptr;
    ASSERT_EQ(
        systems<CreateKey>(L"ntdll.dll", "NtCreateKey")(&child, KEY_ALL_ACCESS, &attributes, 0, nullptr, 0, nullptr),
        0);
    RegCloseKey(static_cast<HKEY>(child));
  }
  void delete_child(std::wstring name) const {
    using OpenKey = NTSTATUS(NTAPI*)(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*);
    using DeleteKey = NTSTATUS(NTAPI*)(HANDLE);
    UNICODE_STRING counted = counted_name(name);
    OBJECT_ATTRIBUTES attributes = {};
    InitializeObjectAttributes(&attributes, &counted, 0, key_, nullptr);
    HANDLE child = nullptr;
    ASSERT_EQ(systems<OpenKey>(L"ntdll.dll", "NtOpenKey")(&child, DELETE, &attributes), 0);
    EXPECT_EQ(systems<DeleteKey>(L"ntdll.dll", "NtDeleteKey")(child), 0);
    RegCloseKey(static_cast<HKEY>(child));
  }

  const TemporaryClassesRoot root_;
  HKEY key_ = nullptr;
};

// A text by its rule: whole characters up to the first NUL, whatever was written.
TEST_F(RegistryReading, TakesWhateverWasWritten) {
  std::mt19937 random(20060630);
  for (int round = 0; round < 2000; ++round) {
    const DWORD type = round % 3 == 0 ? random() % 12 : REG_SZ;
    std::vector<BYTE> bytes(random() % (round % 100 == 0 ? 70000 : 40));
    for (BYTE& byte : bytes) byte = static_cast<BYTE>(random() % 4 == 0 ? 0 : random());
    const auto found = read(type, bytes);
    ASSERT_EQ(found.has_value(), type == REG_SZ && bytes.size() <= 65536) << "round " << round;
    if (!found) continue;
    std::wstring expected(bytes.size() / 2, L'\0');
    std::copy_n(bytes.begin(), expected.size() * 2, reinterpret_cast<BYTE*>(expected.data()));
    expected = expected.c_str();
    ASSERT_EQ(*found, expected) << "round " << round;
    ASSERT_EQ(std::wstring_view(found->c_str()), expected) << "written beyond its end in round " << round;
  }
}

TEST_F(RegistryReading, TakesTheWholeOfAValueThatGrowsMeanwhile) {
  store(key_, REG_SZ, bytes_of_text(L"short"));
  const ReplacedImport query(GetModuleHandleW(nullptr), "RegQueryValueExW", reinterpret_cast<void*>(query_growing));
  ASSERT_TRUE(query.found());
  growths_left = 5;
  const auto found = read_key();
  ASSERT_TRUE(found.has_value());
  EXPECT_TRUE(*found == L"short" || *found == std::wstring(found->size(), L'a'));

  growths_left = 5;
  store(key_, REG_SZ, bytes_of_text(std::wstring(600, L'a')));
  const auto longer = read_key();
  ASSERT_TRUE(longer.has_value());
  EXPECT_EQ(longer->size() % 1000, 0u);
  EXPECT_EQ(*longer, std::wstring(longer->size(), L'a'));

  growths_left = 5;
  const auto before = root_.snapshot();
  {
    RegistryTransaction transaction(kMachineClasses);
    EXPECT_EQ(transaction.write(kKey, L"", L"ours"), ERROR_SUCCESS);
    EXPECT_EQ(read_key(), L"ours");
  }
  EXPECT_EQ(root_.snapshot().size(), before.size());
}

TEST_F(RegistryReading, GivesAHugeValueBack) {
  store(key_, REG_BINARY, std::vector<BYTE>(900'000, 7));
  {
    RegistryTransaction transaction(kMachineClasses);
    EXPECT_EQ(transaction.write(kKey, L"", L"ours"), ERROR_SUCCESS);
  }
  std::vector<BYTE> bytes(1'000'000);
  auto size = static_cast<DWORD>(bytes.size());
  ASSERT_EQ(RegQueryValueExW(key_, nullptr, nullptr, nullptr, bytes.data(), &size), ERROR_SUCCESS);
  bytes.resize(size);
  EXPECT_EQ(bytes, std::vector<BYTE>(900'000, 7));
}

// It can be listed, but not named: removing it again and again would never end.
TEST_F(RegistryReading, EndsAtAKeyThatCannotBeNamed) {
  const std::wstring name(L"a\0b", 3);
  create_child(name);
  EXPECT_TRUE(has_subkeys(kMachineClasses, kKey));
  EXPECT_EQ(remove_key_tree(kMachineClasses, kKey), ERROR_INVALID_NAME);
  delete_child(name);
  EXPECT_FALSE(has_subkeys(kMachineClasses, kKey));
  EXPECT_EQ(remove_key_tree(kMachineClasses, kKey), ERROR_SUCCESS);
  EXPECT_EQ(remove_key_tree(kMachineClasses, kKey), ERROR_SUCCESS);
}

// Where the inner interface makes none of more than 255 characters, as Windows promises, they are given by a listing
// that is led here.
LSTATUS WINAPI enumerate_long(HKEY key, DWORD index, LPWSTR name, LPDWORD length, LPDWORD reserved, LPWSTR key_class,
                              LPDWORD class_length, PFILETIME written) {
  constexpr DWORD kLength = 5000;
  if (*length <= kLength) return ERROR_MORE_DATA;
  const LSTATUS found = systems<decltype(&RegEnumKeyExW)>(L"advapi32.dll", "RegEnumKeyExW")(
      key, index, name, length, reserved, key_class, class_length, written);
  if (found != ERROR_SUCCESS) return found;
  std::fill_n(name, kLength, L'n');
  name[kLength] = L'\0';
  *length = kLength;
  return ERROR_SUCCESS;
}

TEST_F(RegistryReading, SeesAKeyWithAnOverlongName) {
  create_child(L"child");
  const ReplacedImport enumerate(GetModuleHandleW(nullptr), "RegEnumKeyExW", reinterpret_cast<void*>(enumerate_long));
  ASSERT_TRUE(enumerate.found());
  EXPECT_TRUE(has_subkeys(kMachineClasses, kKey));
  EXPECT_NE(remove_key_tree(kMachineClasses, kKey), ERROR_SUCCESS);
}

DWORD flags_of_opening = 0;

HANDLE WINAPI open_file(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                        DWORD flags, HANDLE pattern) {
  flags_of_opening = flags;
  return CreateFileW(path, access, share, security, disposition, flags, pattern);
}

// Whoever registered a pipe must not be able to act in the name of the administrator who removes the registration.
TEST(RegisteredFile, IsOpenedInNobodysName) {
  const ComponentFile file(L"" CORVELLE_DLL);
  const TemporaryClassesRoot root;
  ASSERT_EQ(file.register_server(), S_OK);
  const std::wstring pipe = L"\\\\.\\pipe\\corvelle registry test";
  ASSERT_EQ(RegSetValueW(root.key(), std::wstring(server_key(kClsValidateClass)).c_str(), REG_SZ, pipe.c_str(), 0),
            ERROR_SUCCESS);
  const HANDLE other_end = CreateNamedPipeW(pipe.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 2, 0, 0, 0, nullptr);
  ASSERT_NE(other_end, INVALID_HANDLE_VALUE);
  const ReplacedImport opening(file.module(), "CreateFileW", reinterpret_cast<void*>(open_file));
  ASSERT_TRUE(opening.found());
  EXPECT_EQ(file.unregister_server(), S_OK);
  EXPECT_EQ(flags_of_opening & (SECURITY_SQOS_PRESENT | SECURITY_VALID_SQOS_FLAGS),
            static_cast<DWORD>(SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION));
  EXPECT_NE(registry_snapshot(root.key(), std::wstring(class_key(kClsValidateClass))).size(), 0u)
      << "another's registration";
  CloseHandle(other_end);
}

}  // namespace
}  // namespace corvelle::testing
