// tests/component/registration_free/nothing_registered.h - tests on a machine where the component is not registered.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "component/registration_keys.h"

namespace corvelle::testing {

// A test that fails where a class or the type library is registered, in whatever view of the registry, before it or
// after it.
class NothingRegistered : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(nothing_is_registered()); }
  void TearDown() override { EXPECT_TRUE(nothing_is_registered()); }

 private:
  static bool nothing_is_registered() {
    return !has_key(std::wstring(library_key())) && !has_key(kClsValidateClass.prog_id) &&
           !has_key(kClsVexAppClass.prog_id);
  }

  static bool has_key(const std::wstring& path) {
    for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
      HKEY key = nullptr;
      if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ | view, &key) == ERROR_SUCCESS) {
        RegCloseKey(key);
        return true;
      }
    }
    return false;
  }
};

}  // namespace corvelle::testing
