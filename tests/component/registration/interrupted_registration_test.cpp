// Registration that the system interrupts: each of its writes, deletions and allocations fails in turn.
//
// The DLL is the built one; its imports are led to functions of this program, which fail when they are told to.

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/component_file.h"
#include "tests/support/loaded_image.h"
#include "tests/support/registry_snapshot.h"

namespace corvelle::testing {
namespace {

using ::testing::ElementsAre;

// Which call fails: the one whose turn it is, or it and every later one, as if the process had ended there.
struct Failure {
  int calls_before = 0;
  bool for_good = false;

  bool strikes() {
    const bool now = calls_before == 0 || (for_good && calls_before < 0);
    --calls_before;
    return now;
  }
};

Failure of_writes;
Failure of_deletions;
Failure of_allocations;
constexpr Failure kNever = {.calls_before = 1'000'000};

LSTATUS WINAPI create_key(HKEY key, LPCWSTR name, DWORD reserved, LPWSTR key_class, DWORD options, REGSAM access,
                          LPSECURITY_ATTRIBUTES security, PHKEY result, LPDWORD disposition) {
  if (of_writes.strikes()) return ERROR_DISK_FULL;
  return RegCreateKeyExW(key, name, reserved, key_class, options, access, security, result, disposition);
}

LSTATUS WINAPI set_value(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
  if (of_writes.strikes()) return ERROR_DISK_FULL;
  return RegSetValueExW(key, name, reserved, type, data, size);
}

LSTATUS WINAPI delete_key(HKEY key, LPCWSTR name) {
  if (of_deletions.strikes()) return ERROR_ACCESS_DENIED;
  return RegDeleteKeyW(key, name);
}

LSTATUS WINAPI delete_value(HKEY key, LPCWSTR name) {
  if (of_deletions.strikes()) return ERROR_ACCESS_DENIED;
  return RegDeleteValueW(key, name);
}

void* __cdecl allocate(std::size_t size) { return of_allocations.strikes() ? nullptr : std::malloc(size); }

template <class Function>
void* address_of(Function* function) {
  return reinterpret_cast<void*>(function);
}

// The built DLL with its imports led here, a registry of its own, and a copy of the DLL in another folder.
class InterruptedRegistration : public ::testing::Test {
 protected:
  void SetUp() override {
    of_writes = of_deletions = of_allocations = kNever;
    ASSERT_TRUE(create_.found() && set_.found() && delete_key_.found() && delete_value_.found() && malloc_.found());
  }

  void register_the_other_copy() {
    const std::wstring other = L"other copy.dll";
    ASSERT_TRUE(CopyFileW(L"" CORVELLE_DLL, other.c_str(), FALSE));
    EXPECT_EQ(ComponentFile(other).register_server(), S_OK);
    DeleteFileW(other.c_str());
  }

  // A value of another type and one with a name that registration never writes.
  void write_foreign_values() {
    register_the_other_copy();
    const std::wstring key = L"CLSID\\{6DBCFEEB-0BE1-4771-AA41-83E93B90B9A9}\\InprocServer32";
    const std::wstring path = L"%SystemRoot%\\Corvelle.dll";
    const auto* bytes = reinterpret_cast<const BYTE*>(path.c_str());
    const auto size = static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t));
    HKEY server = nullptr;
    ASSERT_EQ(RegCreateKeyW(HKEY_CLASSES_ROOT, key.c_str(), &server), ERROR_SUCCESS);
    RegSetValueExW(server, nullptr, 0, REG_EXPAND_SZ, bytes, size);
    RegSetValueExW(server, L"ThreadingModel", 0, REG_DWORD, bytes, sizeof(DWORD));
    RegSetValueExW(server, L"Somebody's own", 0, REG_BINARY, bytes, 3);
    RegCloseKey(server);
  }

  // Lets each write fail in turn until registration comes through; gives how many there are.
  int fail_each_write() {
    const auto before = root_.snapshot();
    for (int write = 0;; ++write) {
      of_writes = {.calls_before = write};
      const HRESULT result = file_.register_server();
      of_writes = kNever;
      if (result == S_OK) return write;
      EXPECT_EQ(result, HRESULT_FROM_WIN32(ERROR_DISK_FULL)) << "write " << write;
      EXPECT_EQ(root_.snapshot(), before) << "write " << write;
    }
  }

  const ComponentFile file_{L"" CORVELLE_DLL};
  const TemporaryClassesRoot root_;

 private:
  const ReplacedImport create_{file_.module(), "RegCreateKeyExW", address_of(create_key)};
  const ReplacedImport set_{file_.module(), "RegSetValueExW", address_of(set_value)};
  const ReplacedImport delete_key_{file_.module(), "RegDeleteKeyW", address_of(delete_key)};
  const ReplacedImport delete_value_{file_.module(), "RegDeleteValueW", address_of(delete_value)};
  const ReplacedImport malloc_{file_.module(), "malloc", address_of(allocate)};
};

constexpr int kFewestWrites = 28;  // as many values as a registration has

TEST_F(InterruptedRegistration, LeavesNothing) { EXPECT_GT(fail_each_write(), kFewestWrites); }

TEST_F(InterruptedRegistration, GivesAnotherFileItsRegistrationBack) {
  register_the_other_copy();
  EXPECT_GT(fail_each_write(), kFewestWrites);
}

TEST_F(InterruptedRegistration, GivesValuesOfAnyTypeBack) {
  write_foreign_values();
  EXPECT_GT(fail_each_write(), kFewestWrites);
}

// What a process that was killed half-way left is no obstacle.
TEST_F(InterruptedRegistration, IsCompletedByTheNextAndRemovedWhole) {
  ASSERT_EQ(file_.register_server(), S_OK);
  const auto complete = root_.snapshot();
  ASSERT_EQ(file_.unregister_server(), S_OK);
  const auto removed = root_.snapshot();
  EXPECT_THAT(removed, ElementsAre(L"CLSID", L"Interface", L"TypeLib"));

  HRESULT result = E_FAIL;
  for (int write = 0; result != S_OK; ++write) {
    of_writes = {.calls_before = write, .for_good = true};
    of_deletions = {.calls_before = 0, .for_good = true};
    result = file_.register_server();
    of_writes = of_deletions = kNever;
    EXPECT_EQ(file_.register_server(), S_OK);
    EXPECT_EQ(root_.snapshot(), complete) << "write " << write;
    EXPECT_EQ(file_.unregister_server(), S_OK);
    EXPECT_EQ(root_.snapshot(), removed) << "write " << write;
  }
}

TEST_F(InterruptedRegistration, OfARemovalIsCompletedByTheNext) {
  HRESULT result = E_FAIL;
  int deletion = 0;
  for (; result != S_OK; ++deletion) {
    ASSERT_EQ(file_.register_server(), S_OK);
    of_deletions = {.calls_before = deletion};
    result = file_.unregister_server();
    of_deletions = kNever;
    EXPECT_TRUE(result == S_OK || result == E_ACCESSDENIED) << "deletion " << deletion;
    EXPECT_EQ(file_.unregister_server(), S_OK);
    EXPECT_THAT(root_.snapshot(), ElementsAre(L"CLSID", L"Interface", L"TypeLib")) << "deletion " << deletion;
  }
  EXPECT_GT(deletion, 20);
}

TEST_F(InterruptedRegistration, ByWantOfMemoryLeavesWhatWasThere) {
  register_the_other_copy();
  const auto before = root_.snapshot();
  for (const bool for_good : {false, true}) {
    HRESULT result = E_OUTOFMEMORY;
    int allocation = 0;
    for (;; allocation += for_good ? 7 : 1) {  // a sample is enough the second time
      of_allocations = {.calls_before = allocation, .for_good = for_good};
      result = file_.register_server();
      of_allocations = kNever;
      if (result != E_OUTOFMEMORY) break;
      EXPECT_EQ(root_.snapshot(), before) << "allocation " << allocation;
    }
    EXPECT_EQ(result, S_OK);
    EXPECT_GT(allocation, 100);
    register_the_other_copy();
  }
}

}  // namespace
}  // namespace corvelle::testing
