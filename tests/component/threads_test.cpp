// Apartments: marshalled calls, and objects of their own side by side.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "component/class_description.h"
#include "tests/component/host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {
namespace {

// Lets calls from other apartments in until `done`.
void pump_messages_until(const std::atomic<bool>& done) {
  while (!done) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
}

TEST(Apartments, LateBoundCallsFromAnotherAreMarshalled) {
  const Apartment apartment;
  const auto object = create(L"Corvelle.ClsValidate");
  ComPtr<IStream> stream;
  ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, object.Get(), &stream), S_OK);
  std::atomic<bool> done = false;
  std::thread other([&] {
    const Apartment own;
    ComPtr<IDispatch> proxy;
    EXPECT_EQ(
        CoGetInterfaceAndReleaseStream(stream.Detach(), IID_IDispatch, reinterpret_cast<void**>(proxy.GetAddressOf())),
        S_OK);
    EXPECT_NE(proxy.Get(), object.Get());
    const Outcome width = invoke(proxy.Get(), L"GetByte_Pf", Arguments().text(u"中a").int16(0));
    EXPECT_EQ(width.result, S_OK);
    EXPECT_EQ(shown(value_of(width.value.get())), "3");
    const Outcome failed = invoke(proxy.Get(), L"GetByte_Pf", Arguments().text(std::u16string(32767, u'a')).int16(0));
    EXPECT_EQ(failed.result, DISP_E_EXCEPTION);
    EXPECT_EQ(failed.scode, static_cast<HRESULT>(0x800A0006));
    EXPECT_EQ(failed.source, u"Corvelle.ClsValidate");
    EXPECT_FALSE(failed.description.empty());
    proxy.Reset();
    done = true;
  });
  pump_messages_until(done);
  other.join();
}

// The platform's marshaller resolves every parameter type, so it needs the host's data access library; here a stub of
// the same identity stands in for it.
class RegisteredDataAccess {
 public:
  RegisteredDataAccess() {
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadTypeLibEx(CORVELLE_DATA_ACCESS_STUB, REGKIND_REGISTER, &library), S_OK);
  }
  ~RegisteredDataAccess() {
    constexpr SYSKIND kSystemKind = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
    UnRegisterTypeLib(kDataAccessLibraryId, kDataAccessMajor, kDataAccessMinor, LOCALE_NEUTRAL, kSystemKind);
  }
  RegisteredDataAccess(const RegisteredDataAccess&) = delete;
  RegisteredDataAccess& operator=(const RegisteredDataAccess&) = delete;
};

TEST(Apartments, EarlyBoundCallsFromAnotherAreMarshalled) {
  const Apartment apartment;
  const RegisteredDataAccess data_access;
  const auto validate = create_validate();
  ComPtr<IStream> stream;
  ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(kClsValidateInterfaceId, validate.Get(), &stream), S_OK);
  std::atomic<bool> done = false;
  std::thread other([&] {
    const Apartment own;
    ComPtr<_ClsValidate> proxy;
    EXPECT_EQ(CoGetInterfaceAndReleaseStream(stream.Detach(), kClsValidateInterfaceId,
                                             reinterpret_cast<void**>(proxy.GetAddressOf())),
              S_OK);
    if (proxy) {
      EXPECT_NE(proxy.Get(), validate.Get());
      SHORT width = 0;
      EXPECT_EQ(proxy->GetByte_Pf(ScopedBstr(u"中a").get(), 0, &width), S_OK);
      EXPECT_EQ(width, 3);
      ScopedBstr padded;
      EXPECT_EQ(proxy->Set_String1(ScopedBstr(u"中").get(), 4, 1, padded.receive()), S_OK);
      EXPECT_EQ(padded.view(), u"  中");
      EXPECT_EQ(proxy->GetByte_Pf(ScopedBstr(std::u16string(32767, u'a')).get(), 0, &width),
                static_cast<HRESULT>(0x800A0006));
    }
    proxy.Reset();
    done = true;
  });
  pump_messages_until(done);
  other.join();
}

// The object that `stream` carries here from another apartment.
ComPtr<IDispatch> proxy_in(ComPtr<IStream>& stream) {
  ComPtr<IDispatch> proxy;
  EXPECT_EQ(
      CoGetInterfaceAndReleaseStream(stream.Detach(), IID_IDispatch, reinterpret_cast<void**>(proxy.GetAddressOf())),
      S_OK);
  return proxy;
}

TEST(Apartments, AGridOfAnotherIsDrivenThroughItsProxy) {
  const Apartment apartment;
  GridModel model;
  const auto grid = owned(new_grid(model));
  ComPtr<IStream> stream;
  ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, grid.Get(), &stream), S_OK);
  std::atomic<bool> done = false;
  std::thread other([&] {
    const Apartment own;
    const auto validate = create_validate();
    auto proxy = proxy_in(stream);
    EXPECT_NE(proxy.Get(), grid.Get());
    ScopedVariant nothing;
    SHORT alignment = 7;
    EXPECT_EQ(validate->SetGrdCenter(object_variant(proxy.Get()), nothing.receive()), S_OK);
    EXPECT_EQ(validate->SetGrdAlign(object_variant(proxy.Get()), &alignment, nothing.receive()), S_OK);
    EXPECT_EQ(validate->ClearGrd(object_variant(proxy.Get())), S_OK);
    const Outcome refused =
        invoke(validate.Get(), L"SetGrdAlign", Arguments().borrowed(object_variant(proxy.Get())).int16(99));
    EXPECT_EQ(refused.result, DISP_E_EXCEPTION);
    EXPECT_EQ(refused.scode, kInvalidPropertyValue);
    EXPECT_FALSE(refused.description.empty());
    proxy.Reset();
    done = true;
  });
  pump_messages_until(done);
  other.join();
  EXPECT_EQ((model.cell_alignments[{0, 4}]), 4);
  EXPECT_EQ(model.col_alignments[4], 7);
  EXPECT_EQ(model.rows, 200);
  EXPECT_EQ(grid->references(), 1u);
}

// The host's thread is gone, and with it the grid's apartment: an error and not "no such member".
TEST(Apartments, AGridWhoseApartmentEndedIsAnErrorOfTheConnection) {
  const Apartment apartment;
  const auto validate = create_validate();
  GridModel model;
  ComPtr<IStream> stream;
  std::thread other([&] {
    const Apartment own;
    const auto grid = owned(new_grid(model));
    EXPECT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, grid.Get(), &stream), S_OK);
  });
  other.join();
  const auto proxy = proxy_in(stream);
  ASSERT_NE(proxy, nullptr);
  ScopedVariant nothing;
  const HRESULT result = validate->SetGrdCenter(object_variant(proxy.Get()), nothing.receive());
  EXPECT_TRUE(FAILED(result));
  EXPECT_NE(result, static_cast<HRESULT>(0x800A01B6)) << "no such member";
}

TEST(Apartments, AnObjectCreatedFromTheMultithreadedApartmentLivesInOneOfItsOwn) {
  std::thread other([] {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    {
      const auto object = create(L"Corvelle.ClsValidate");
      const Outcome width = invoke(object.Get(), L"GetByte_Pf", Arguments().text(u"中a").int16(0));
      EXPECT_EQ(width.result, S_OK);
      EXPECT_EQ(shown(value_of(width.value.get())), "3");
    }
    CoUninitialize();
  });
  other.join();
}

TEST(TextSlot, EachThreadHasItsOwn) {
  const Apartment apartment;
  const auto first = create_vex_app();
  const auto second = create_vex_app();
  ScopedVariant stored;
  EXPECT_EQ(first->Set_Str(ScopedBstr(u"here").get(), stored.receive()), S_OK);
  EXPECT_EQ(V_VT(&stored.get()), VT_EMPTY);
  std::thread other([] {
    const Apartment own;
    const auto object = create_vex_app();
    ScopedBstr content;
    EXPECT_EQ(object->Get_Str(content.receive()), S_OK);
    EXPECT_EQ(content.view(), u"") << "empty at first, whatever other threads stored";
    ScopedVariant there;
    EXPECT_EQ(object->Set_Str(ScopedBstr(u"there").get(), there.receive()), S_OK);
  });
  other.join();
  ScopedBstr content;
  EXPECT_EQ(second->Get_Str(content.receive()), S_OK);
  EXPECT_EQ(content.view(), u"here") << "every instance on a thread sees its slot";
}

TEST(Apartments, ThreadsWithObjectsOfTheirOwnRunSideBySide) {
  constexpr int kThreads = 4;
  constexpr int kCalls = 2000;
  std::atomic<int> right = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&right, i] {
      const Apartment apartment;
      const auto validate = create_validate();
      const ScopedBstr text(std::u16string(static_cast<std::size_t>(i + 1), u'中'));
      for (int call = 0; call < kCalls; ++call) {
        SHORT width = 0;
        if (validate->GetByte_Pf(text.get(), 0, &width) == S_OK && width == 2 * (i + 1)) ++right;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right, kThreads * kCalls);
}

}  // namespace
}  // namespace corvelle::testing
