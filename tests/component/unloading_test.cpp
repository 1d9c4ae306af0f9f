// What keeps the DLL loaded. A program of its own: the system's own apartments keep class factories once used.
#include <gtest/gtest.h>

#include "component/identifiers.h"
#include "tests/component/host.h"

namespace corvelle::testing {
namespace {

ComPtr<IClassFactory> factory_of(REFCLSID class_id) {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                             reinterpret_cast<void**>(factory.GetAddressOf())),
            S_OK);
  return factory;
}

HMODULE loaded_component() { return GetModuleHandleW(L"Corvelle.dll"); }

template <class Function>
Function exported(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(loaded_component(), name)));
}

HRESULT can_unload() { return exported<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")(); }

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
    // The first call marks the library, the next one that finds it still unused lets it go.
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(loaded_component(), nullptr);
  }
}

}  // namespace
}  // namespace corvelle::testing
