// Registration with the real regsvr32, used by real hosts of both bitnesses.

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>

#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <iterator>
#include <set>

#include "component/class_description.h"
#include "component/registration_keys.h"
#include "tests/component/registration/machine.h"
#include "tests/support/component_file.h"
#include "tests/support/registry_snapshot.h"

namespace corvelle::testing {
namespace {

using ::testing::IsEmpty;
using ::testing::Not;

bool is_64_bit_windows() {
  SYSTEM_INFO system = {};
  GetNativeSystemInfo(&system);
  return system.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_INTEL;
}

#ifdef _WIN64
// Both views: the 32-bit one is a part of the 64-bit one.
std::set<std::wstring> all_classes() {
  std::set<std::wstring> lines;
  for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    for (std::wstring& line : registry_snapshot(root, L"Software\\Classes")) lines.insert(std::move(line));
  }
  return lines;
}
#endif

// Starts and ends with nothing of the component registered.
class Registration : public ::testing::Test {
 protected:
  void SetUp() override {
    CoInitialize(nullptr);
    remove_component_keys();
    ASSERT_THAT(component_keys(), IsEmpty());
  }
  void TearDown() override {
    CoUninitialize();
    remove_component_keys();
  }
};

using OneBitness = Registration;

class BothBitnesses : public Registration {
 protected:
  void SetUp() override {
    if (!is_64_bit_windows()) GTEST_SKIP() << "this Windows runs one bitness only";
    Registration::SetUp();
  }
};

TEST_F(OneBitness, IsCreatedOnlyWhileItIsRegistered) {
  EXPECT_EQ(create_class(), REGDB_E_CLASSNOTREG);
  EXPECT_FALSE(host_works(kOwnBitness));

  ASSERT_EQ(regsvr32(kOwnBitness, built_dll(kOwnBitness)), 0u);
  EXPECT_EQ(create_class(), S_OK);
  EXPECT_TRUE(host_works(kOwnBitness));

  ASSERT_EQ(regsvr32_remove(kOwnBitness, built_dll(kOwnBitness)), 0u);
  EXPECT_EQ(create_class(), REGDB_E_CLASSNOTREG);
  EXPECT_FALSE(host_works(kOwnBitness));
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(OneBitness, ChangesNothingWhenRegisteredOverItself) {
  ASSERT_EQ(regsvr32(kOwnBitness, built_dll(kOwnBitness)), 0u);
  const auto once = component_keys();
  ASSERT_EQ(regsvr32(kOwnBitness, built_dll(kOwnBitness)), 0u);
  EXPECT_EQ(component_keys(), once);
}

TEST_F(OneBitness, IsRemovedTwiceWithoutAnError) {
  ASSERT_EQ(regsvr32(kOwnBitness, built_dll(kOwnBitness)), 0u);
  EXPECT_EQ(regsvr32_remove(kOwnBitness, built_dll(kOwnBitness)), 0u);
  EXPECT_EQ(regsvr32_remove(kOwnBitness, built_dll(kOwnBitness)), 0u);
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(OneBitness, WorksFromAFolderWithSpacesAndChineseCharacters) {
  const CopyOfDll copy(L"库存 报表 한글 2");
  ASSERT_EQ(regsvr32(kOwnBitness, copy.path()), 0u);
  EXPECT_EQ(create_class(), S_OK);
  EXPECT_TRUE(host_works(kOwnBitness));
  EXPECT_THAT(component_keys(), ::testing::Contains(::testing::HasSubstr(L" (default) = \"" + copy.path() + L"\"")));
  EXPECT_EQ(regsvr32_remove(kOwnBitness, copy.path()), 0u);
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(OneBitness, WorksFromAFolderWithEveryCharacterThatANameCanHave) {
  const CopyOfDll copy(L"!#$%&'()+,-.;=@[]^_`{}~ ü한ｆ\U0001F600 %TEMP% a");
  ASSERT_EQ(regsvr32(kOwnBitness, copy.path()), 0u);
  EXPECT_EQ(create_class(), S_OK);
  EXPECT_THAT(component_keys(), ::testing::Contains(::testing::HasSubstr(L" (default) = \"" + copy.path() + L"\"")));
  EXPECT_EQ(regsvr32_remove(kOwnBitness, copy.path()), 0u);
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(OneBitness, IsRegisteredByAPathOfAnyLength) {
  std::wstring folder = L"\\\\?\\" + std::filesystem::temp_directory_path().wstring();
  const std::size_t first = folder.size();
  while (folder.size() < 500) {
    folder += std::wstring(80, L'深') + L"\\";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
  }
  const std::wstring path = folder + L"Corvelle.dll";
  ASSERT_TRUE(CopyFileW(built_dll(kOwnBitness).c_str(), path.c_str(), FALSE));
  {
    const ComponentFile file(path);
    EXPECT_EQ(file.register_server(), S_OK);
    wchar_t name[1000] = L"";
    GetModuleFileNameW(file.module(), name, 1000);
    EXPECT_GT(std::wcslen(name), std::size_t{MAX_PATH});
    EXPECT_THAT(
        component_keys(),
        ::testing::Contains(::testing::HasSubstr(std::wstring(L"InprocServer32 (default) = \"") + name + L"\"")));
    EXPECT_EQ(file.unregister_server(), S_OK);
  }
  EXPECT_THAT(component_keys(), IsEmpty());
  DeleteFileW(path.c_str());
  for (; folder.size() > first; folder.resize(folder.rfind(L'\\', folder.size() - 2) + 1)) {
    RemoveDirectoryW(folder.c_str());
  }
}

// HKEY_CLASSES_ROOT shows the user's entries before the machine's, writes to them and removes them first. Wine shows
// the machine's alone, so it is made to show another key here.
TEST_F(OneBitness, IsForTheMachineWhateverTheUserHas) {
  set_default(HKEY_CURRENT_USER, std::wstring(server_key(kClsValidateClass)), L"C:\\the user's own.dll");
  set_default(HKEY_CURRENT_USER, L"Corvelle.ClsVexApp", L"the user's own");
  const auto of_user = [] { return registry_snapshot(HKEY_CURRENT_USER, L"Software\\Classes"); };
  const auto before = of_user();
  const ComponentFile file(built_dll(kOwnBitness));
  HKEY shown = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, KEY_ALL_ACCESS, &shown), ERROR_SUCCESS);
  ASSERT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, shown), ERROR_SUCCESS);
  EXPECT_EQ(file.register_server(), S_OK);
  EXPECT_EQ(of_user(), before);
  EXPECT_THAT(
      registry_snapshot(HKEY_LOCAL_MACHINE, L"Software\\Classes\\" + std::wstring(server_key(kClsValidateClass))),
      ::testing::Contains(::testing::HasSubstr(built_dll(kOwnBitness))));
  EXPECT_EQ(file.unregister_server(), S_OK);
  RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
  RegCloseKey(shown);
  EXPECT_EQ(of_user(), before);
  for (const std::wstring& key :
       {std::wstring(class_key(kClsValidateClass)), std::wstring(interface_key(kClsVexAppClass)),
        std::wstring(library_key()), std::wstring(L"Corvelle.ClsVexApp")}) {
    EXPECT_THAT(registry_snapshot(HKEY_LOCAL_MACHINE, L"Software\\Classes\\" + key), IsEmpty());
  }
}

TEST_F(OneBitness, IsRemovedThroughItsShortPath) {
  const CopyOfDll copy(L"a folder with a long name");
  std::wstring short_path(MAX_PATH, L'\0');
  short_path.resize(GetShortPathNameW(copy.path().c_str(), short_path.data(), MAX_PATH));
  if (short_path == copy.path()) GTEST_SKIP() << "this drive has no short names";
  ASSERT_EQ(regsvr32(kOwnBitness, copy.path()), 0u);
  EXPECT_EQ(regsvr32_remove(kOwnBitness, short_path), 0u);
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(OneBitness, LeavesAnotherCopyThatWasRegisteredOverItAlone) {
  const CopyOfDll first(L"first copy");
  const CopyOfDll second(L"second copy");
  ASSERT_EQ(regsvr32(kOwnBitness, first.path()), 0u);
  ASSERT_EQ(regsvr32(kOwnBitness, second.path()), 0u);
  const auto registered = component_keys();
  EXPECT_EQ(regsvr32_remove(kOwnBitness, first.path()), 0u);
  EXPECT_EQ(component_keys(), registered);
  EXPECT_TRUE(host_works(kOwnBitness));
  EXPECT_EQ(regsvr32_remove(kOwnBitness, second.path()), 0u);
  EXPECT_THAT(component_keys(), IsEmpty());
}

// Another product's class under our ProgID, a successor's perhaps.
TEST_F(OneBitness, LeavesAProgIdThatNamesAnotherClassAlone) {
  ASSERT_EQ(regsvr32(kOwnBitness, built_dll(kOwnBitness)), 0u);
  const std::wstring key = L"Software\\Classes\\Corvelle.ClsVexApp\\Clsid";
  const wchar_t other[] = L"{00000000-1111-2222-3333-444444444444}";
  HKEY opened = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_SET_VALUE, &opened), ERROR_SUCCESS);
  RegSetValueExW(opened, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(other), sizeof(other));
  RegCloseKey(opened);
  EXPECT_EQ(regsvr32_remove(kOwnBitness, built_dll(kOwnBitness)), 0u);
  EXPECT_THAT(registry_snapshot(HKEY_LOCAL_MACHINE, key), Not(IsEmpty()));
  EXPECT_THAT(registry_snapshot(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Corvelle.ClsValidate"), IsEmpty());
}

TEST_F(OneBitness, IsRefusedWithoutRightsAndLeavesWhatWasThere) {
  const CopyOfDll other(L"registered before");
  ASSERT_EQ(regsvr32(kOwnBitness, other.path()), 0u);
  const auto before = component_keys();
  {
    const WriteProtectedKey last(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Corvelle.ClsVexApp\\Clsid", 0);
    const ComponentFile file(built_dll(kOwnBitness));
    EXPECT_EQ(file.register_server(), E_ACCESSDENIED);
    EXPECT_NE(regsvr32(kOwnBitness, built_dll(kOwnBitness)), 0u);
    EXPECT_EQ(component_keys(), before);
  }
}

#ifdef _WIN64  // once is enough: reading all classes takes seconds
TEST_F(BothBitnesses, AreRegisteredSideBySideAndLeaveNothing) {
  // On their first run the script hosts register something of their own.
  ASSERT_FALSE(host_works(Bitness::k32));
  ASSERT_FALSE(host_works(Bitness::k64));
  const auto before = all_classes();
  ASSERT_GT(before.size(), 1000u) << "the system's own classes";
  ASSERT_EQ(regsvr32(Bitness::k32, built_dll(Bitness::k32)), 0u);
  ASSERT_EQ(regsvr32(Bitness::k64, built_dll(Bitness::k64)), 0u);
  EXPECT_TRUE(host_works(Bitness::k32));
  EXPECT_TRUE(host_works(Bitness::k64));
  EXPECT_EQ(regsvr32_remove(Bitness::k32, built_dll(Bitness::k32)), 0u);
  EXPECT_EQ(regsvr32_remove(Bitness::k64, built_dll(Bitness::k64)), 0u);
  const auto after = all_classes();
  std::vector<std::wstring> changed;
  std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(), std::back_inserter(changed));
  EXPECT_THAT(changed, IsEmpty());
}
#endif

class OneOfBoth : public BothBitnesses, public ::testing::WithParamInterface<Bitness> {};

TEST_P(OneOfBoth, GoesAndTheOtherStillWorks) {
  const Bitness goes = GetParam();
  const Bitness stays = goes == Bitness::k32 ? Bitness::k64 : Bitness::k32;
  ASSERT_EQ(regsvr32(stays, built_dll(stays)), 0u);
  const auto alone = component_keys();
  ASSERT_EQ(regsvr32(goes, built_dll(goes)), 0u);
  EXPECT_EQ(regsvr32_remove(goes, built_dll(goes)), 0u);
  EXPECT_TRUE(host_works(stays));
  EXPECT_FALSE(host_works(goes));
  EXPECT_EQ(create_class(), stays == kOwnBitness ? S_OK : REGDB_E_CLASSNOTREG);
  EXPECT_EQ(regsvr32_remove(stays, built_dll(stays)), 0u);
  EXPECT_THAT(component_keys(), IsEmpty());
  EXPECT_THAT(alone, Not(IsEmpty()));
}

INSTANTIATE_TEST_SUITE_P(BothWaysRound, OneOfBoth, ::testing::Values(Bitness::k32, Bitness::k64),
                         [](const auto& removed) { return removed.param == Bitness::k32 ? "Removes32" : "Removes64"; });

}  // namespace
}  // namespace corvelle::testing
