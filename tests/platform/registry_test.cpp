// What registration takes for granted of the registry: calls of the system and nothing else.
#include <windows.h>

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace corvelle::testing {
namespace {

// A key of the user's own for the length of a test; keys that the test makes below it are deleted, two levels deep.
class PlatformKey : public ::testing::Test {
 protected:
  void SetUp() override {
    DWORD disposition = 0;
    ASSERT_EQ(create(HKEY_CURRENT_USER, path_.c_str(), &key_, &disposition), ERROR_SUCCESS);
    ASSERT_EQ(disposition, DWORD{REG_CREATED_NEW_KEY});
  }
  void TearDown() override {
    for (const wchar_t* name : {L"outer\\inner", L"outer", L"other"}) RegDeleteKeyW(key_, name);
    RegCloseKey(key_);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, path_.c_str()), ERROR_SUCCESS);
  }

  static LSTATUS create(HKEY root, const wchar_t* path, HKEY* key, DWORD* disposition) {
    return RegCreateKeyExW(root, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key, disposition);
  }
  void create_below(const wchar_t* path) const {
    HKEY created = nullptr;
    ASSERT_EQ(create(key_, path, &created, nullptr), ERROR_SUCCESS);
    RegCloseKey(created);
  }
  LSTATUS write(const wchar_t* name, DWORD type, const void* bytes, DWORD size) const {
    return RegSetValueExW(key_, name, 0, type, static_cast<const BYTE*>(bytes), size);
  }

  std::wstring path_ = L"Software\\Corvelle test of the platform " + std::to_wstring(GetCurrentProcessId());
  HKEY key_ = nullptr;
};

TEST_F(PlatformKey, IsMadeOnceWithAllAboveIt) {
  HKEY keys[2] = {};
  DWORD dispositions[2] = {};
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(create(key_, L"outer\\inner", &keys[i], &dispositions[i]), ERROR_SUCCESS);
    RegCloseKey(keys[i]);
  }
  EXPECT_EQ(dispositions[0], DWORD{REG_CREATED_NEW_KEY});
  EXPECT_EQ(dispositions[1], DWORD{REG_OPENED_EXISTING_KEY});
}

TEST_F(PlatformKey, IsFoundWhateverTheCaseOfItsName) {
  create_below(L"outer");
  HKEY found = nullptr;
  ASSERT_EQ(RegOpenKeyExW(key_, L"OUTER", 0, KEY_QUERY_VALUE, &found), ERROR_SUCCESS);
  RegCloseKey(found);
  EXPECT_EQ(RegOpenKeyExW(key_, L"missing", 0, KEY_QUERY_VALUE, &found), ERROR_FILE_NOT_FOUND);
}

TEST_F(PlatformKey, IsNotDeletedWithKeysBelowIt) {
  create_below(L"outer\\inner");
  EXPECT_EQ(RegDeleteKeyW(key_, L"outer"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteKeyW(key_, L"outer\\inner"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(key_, L"outer"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(key_, L"outer"), ERROR_FILE_NOT_FOUND);
}

TEST_F(PlatformKey, ListsTheKeysBelowItAndSaysWhereTheyEnd) {
  create_below(L"outer");
  wchar_t name[6] = {};
  DWORD length = 5;  // one too few for the terminator
  EXPECT_EQ(RegEnumKeyExW(key_, 0, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
  length = 6;
  ASSERT_EQ(RegEnumKeyExW(key_, 0, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
  EXPECT_EQ(length, 5U);
  EXPECT_STREQ(name, L"outer");
  length = 6;
  EXPECT_EQ(RegEnumKeyExW(key_, 1, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
}

TEST_F(PlatformKey, GivesAValueAsItWasWritten) {
  const wchar_t text[] = {L'a', L'\0', L'b'};  // without a terminator
  ASSERT_EQ(write(L"", REG_SZ, text, sizeof(text) - 1), ERROR_SUCCESS);
  BYTE bytes[64] = {};
  DWORD size = sizeof(bytes);
  DWORD type = REG_NONE;
  ASSERT_EQ(RegQueryValueExW(key_, L"", nullptr, &type, bytes, &size), ERROR_SUCCESS);
  EXPECT_EQ(type, DWORD{REG_SZ});
  EXPECT_EQ(std::string(bytes, bytes + size), std::string(reinterpret_cast<const char*>(text), sizeof(text) - 1));
}

TEST_F(PlatformKey, SaysHowLongAValueIsThatDoesNotFit) {
  const BYTE written[20] = {};
  ASSERT_EQ(write(L"long", REG_BINARY, written, sizeof(written)), ERROR_SUCCESS);
  BYTE bytes[19];
  DWORD size = sizeof(bytes);
  EXPECT_EQ(RegQueryValueExW(key_, L"long", nullptr, nullptr, bytes, &size), ERROR_MORE_DATA);
  EXPECT_EQ(size, sizeof(written));
}

TEST_F(PlatformKey, HasNoValueOnceThatIsDeleted) {
  ASSERT_EQ(write(L"short", REG_DWORD, "\1\0\0", 4), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteValueW(key_, L"short"), ERROR_SUCCESS);
  EXPECT_EQ(RegQueryValueExW(key_, L"short", nullptr, nullptr, nullptr, nullptr), ERROR_FILE_NOT_FOUND);
}

TEST_F(PlatformKey, TakesNoWriteByAHandleThatOnlyReads) {
  create_below(L"outer");
  HKEY reading = nullptr;
  ASSERT_EQ(RegOpenKeyExW(key_, L"outer", 0, KEY_QUERY_VALUE, &reading), ERROR_SUCCESS);
  EXPECT_EQ(RegSetValueExW(reading, L"", 0, REG_SZ, reinterpret_cast<const BYTE*>(L""), 2), ERROR_ACCESS_DENIED);
  RegCloseKey(reading);
}

// Of a branch that has one view, as the user's own has, the flags of the two views are no error.
TEST_F(PlatformKey, IsOneForBothViewsWhereNothingIsRedirected) {
  const DWORD number = 7;
  ASSERT_EQ(write(L"number", REG_DWORD, &number, sizeof(number)), ERROR_SUCCESS);
  for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
    HKEY seen = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, KEY_QUERY_VALUE | view, &seen), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExW(seen, L"number", nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    RegCloseKey(seen);
  }
}

}  // namespace
}  // namespace corvelle::testing
