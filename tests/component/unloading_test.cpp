// What keeps the DLL loaded. A program of its own: the system's own apartments keep class factories once used.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cwchar>
#include <string>
#include <thread>

#include "component/identifiers.h"
#include "tests/component/host.h"
#include "tests/component/process.h"

namespace corvelle::testing {
namespace {

TEST(Unloading, WaitsForObjectsFactoriesAndLocks) {
  const Apartment apartment;
  const HMODULE keeps_loaded = [] {
    const auto object = create(L"Corvelle.ClsValidate");
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(loaded_component(), path, MAX_PATH);
    return LoadLibraryW(path);
  }();
  ASSERT_NE(keeps_loaded, nullptr);
  EXPECT_EQ(can_unload(), S_OK);
  auto object = create(L"Corvelle.ClsVexApp");
  EXPECT_EQ(can_unload(), S_FALSE);
  object.Reset();
  EXPECT_EQ(can_unload(), S_OK);
  auto factory = factory_of(kClsValidateId);
  EXPECT_EQ(can_unload(), S_FALSE);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  factory.Reset();
  EXPECT_EQ(can_unload(), S_FALSE) << "a lock outlives its factory";
  EXPECT_EQ(factory_of(kClsVexAppId)->LockServer(FALSE), S_OK);
  EXPECT_EQ(can_unload(), S_OK);
  FreeLibrary(keeps_loaded);
}

TEST(Unloading, HappensAndTheComponentLoadsAgain) {
  const Apartment apartment;
  for (int round = 0; round < 3; ++round) {
    {
      const auto object = create(L"Corvelle.ClsValidate");
      ASSERT_NE(loaded_component(), nullptr);
      CoFreeUnusedLibrariesEx(0, 0);
      EXPECT_NE(loaded_component(), nullptr) << "an object is alive";
    }
    EXPECT_TRUE(unload_component());
  }
}

void use_slot(std::u16string_view content) {
  const Apartment apartment;
  const auto object = create_vex_app();
  ScopedVariant stored;
  EXPECT_EQ(object->Set_Str(ScopedBstr(content).get(), stored.receive()), S_OK);
}

TEST(TextSlot, ThreadsThatEndLeaveNothingBehind) {
  const Apartment apartment;
  const auto keeps_loaded = create_vex_app();
  const std::u16string content(5000, u'中');
  // Straight through the vtable, without an apartment: making those takes most of a minute and is not the matter here.
  const auto use_and_end = [&](int threads) {
    for (int i = 0; i < threads; ++i) {
      std::thread([&] {
        VARIANT stored;
        EXPECT_EQ(keeps_loaded->Set_Str(ScopedBstr(content).get(), &stored), S_OK);
      }).join();
    }
  };
  use_and_end(200);
  const std::size_t before = private_bytes();
  use_and_end(_wgetenv(L"CORVELLE_SOAK") != nullptr ? 10000 : 1000);
  // Kept, the slots of a thousand threads alone would be 10 MB.
  EXPECT_LT(private_bytes(), before + 4 * 1024 * 1024);
}

TEST(TextSlot, UnloadsUnderThreadsThatUsedIt) {
  const Apartment apartment;
  for (int round = 0; round < 3; ++round) {
    std::atomic<bool> used = false;
    std::atomic<bool> end = false;
    std::thread living([&] {
      use_slot(u"left behind");
      used = true;
      while (!end) Sleep(1);
    });
    while (!used) Sleep(1);
    EXPECT_TRUE(unload_component()) << "no object is alive";
    end = true;
    living.join();  // its end must not reach into the unloaded DLL
    const auto object = create_vex_app();
    ScopedBstr content;
    EXPECT_EQ(object->Get_Str(content.receive()), S_OK);
    EXPECT_EQ(content.view(), u"") << "the slot lived as long as the component was loaded";
  }
}

}  // namespace
}  // namespace corvelle::testing
