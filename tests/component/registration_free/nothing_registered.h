// tests/component/registration_free/nothing_registered.h - tests on a machine where the component is not registered.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include "component/class_description.h"

namespace corvelle::testing {

// A test that fails where one of the classes is registered, in whatever view of the registry.
class NothingRegistered : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
      for (const ClassDescription* description : kClasses) {
        HKEY key = nullptr;
        ASSERT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, description->prog_id, 0, KEY_READ | view, &key),
                  ERROR_FILE_NOT_FOUND);
      }
    }
  }
};

}  // namespace corvelle::testing
