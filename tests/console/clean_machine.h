// tests/console/clean_machine.h - tests that begin and end with nothing of the component registered.
#pragma once

#include <gtest/gtest.h>
#include <objbase.h>

#include "tests/component/registration/machine.h"

namespace corvelle::testing {

// COM is there while a test runs.
class CleanMachine : public ::testing::Test {
 protected:
  void SetUp() override {
    CoInitialize(nullptr);
    remove_component_keys();
  }
  void TearDown() override {
    remove_component_keys();
    CoUninitialize();
  }
};

}  // namespace corvelle::testing
