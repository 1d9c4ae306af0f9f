// The component's life in a host that runs for long: loaded again and again, used by thousands of threads, by many at
// once, released from elsewhere, and left alive when the process ends. With CORVELLE_SOAK set the long forms run.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "tests/component/host.h"
#include "tests/component/process.h"

namespace corvelle::testing {
namespace {

bool soaking() { return _wgetenv(L"CORVELLE_SOAK") != nullptr; }

// What the process holds now, to be compared with what it holds after much more of the same.
struct Holdings {
  std::size_t bytes = private_bytes();
  std::size_t handles = open_handles();

  void expect_no_more_now() const {
    constexpr std::size_t kSlackBytes = 2 * 1024 * 1024;  // the heap's own movements
    constexpr std::size_t kSlackHandles = 8;              // the system's threads come and go
    EXPECT_LT(private_bytes(), bytes + kSlackBytes);
    EXPECT_LT(open_handles(), handles + kSlackHandles);
    std::printf("  private bytes %zu -> %zu, handles %zu -> %zu\n", bytes, private_bytes(), handles, open_handles());
  }
};

// Or none of what follows would mean anything.
TEST(Holdings, ShowWhatIsLost) {
  const Holdings before;
  const std::vector<char> memory(8 * 1024 * 1024, 'x');
  std::vector<HANDLE> handles(100);
  for (HANDLE& handle : handles) handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  EXPECT_GT(private_bytes(), before.bytes + memory.size() / 2);
  EXPECT_GT(open_handles(), before.handles + handles.size() / 2);
  for (HANDLE handle : handles) CloseHandle(handle);
}

// Calls both classes both ways; what is wrong is a test failure.
void use_component(int number) {
  const auto validate = create_validate();
  const auto vex_app = create_vex_app();
  const ScopedBstr text(ShortText<40>().append(u"单号-").append(decimal_text(number)));
  ScopedVariant stored;
  EXPECT_EQ(vex_app->Set_Str(text.get(), stored.receive()), S_OK);
  const Outcome width = invoke(validate.Get(), L"GetByte_Pf", Arguments().text(u"中a").int16(0));
  EXPECT_EQ(shown(value_of(width.value.get())), "3");
  SHORT overflown = 0;
  EXPECT_EQ(validate->GetByte_Pf(ScopedBstr(std::u16string(32767, u'a')).get(), 0, &overflown),
            static_cast<HRESULT>(0x800A0006));
  ScopedBstr content;
  EXPECT_EQ(vex_app->Get_Str(content.receive()), S_OK);
  EXPECT_EQ(content.view(), text.view());
}

TEST(Life, IsLoadedUsedAndUnloadedAThousandTimes) {
  const Apartment apartment;
  constexpr int kRounds = 1000;
  const auto rounds = [](int count) {
    for (int round = 0; round < count && !::testing::Test::HasFailure(); ++round) {
      use_component(round);
      EXPECT_TRUE(unload_component()) << "round " << round;
    }
  };
  rounds(kRounds / 10);
  const Holdings before;
  rounds(kRounds - kRounds / 10);
  before.expect_no_more_now();
}

TEST(Life, ThreadsComeCreateUseTheSlotAndEnd) {
  const Apartment apartment;
  auto keeps_loaded = create_vex_app();
  const auto threads = [](int count) {
    for (int i = 0; i < count && !::testing::Test::HasFailure(); ++i) {
      std::thread([i] {
        const Apartment own;
        use_component(i);
      }).join();
    }
  };
  threads(50);
  const Holdings before;
  threads(soaking() ? 10'000 : 200);
  before.expect_no_more_now();
  keeps_loaded.Reset();
  EXPECT_TRUE(unload_component()) << "the count of objects is not back at zero";
}

// Lets calls from other apartments in until `done`.
void pump_messages_until(const std::atomic<bool>& done) {
  while (!done) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
}

// The last reference is another apartment's: its release comes back to the object's own thread.
TEST(Life, ObjectsAreReleasedFromAnotherApartment) {
  const Apartment apartment;
  const auto keeps_loaded = LoadLibraryW([] {
    const auto object = create(L"Corvelle.ClsValidate");
    static wchar_t path[MAX_PATH];
    GetModuleFileNameW(loaded_component(), path, MAX_PATH);
    return path;
  }());
  ASSERT_NE(keeps_loaded, nullptr);
  for (int round = 0; round < 20; ++round) {
    auto object = create(L"Corvelle.ClsValidate");
    ComPtr<IStream> stream;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, object.Get(), &stream), S_OK);
    object.Reset();
    EXPECT_EQ(can_unload(), S_FALSE) << "the stream holds it";
    std::atomic<bool> done = false;
    std::thread other([&] {
      const Apartment own;
      ComPtr<IDispatch> proxy;
      EXPECT_EQ(CoGetInterfaceAndReleaseStream(stream.Detach(), IID_IDispatch,
                                               reinterpret_cast<void**>(proxy.GetAddressOf())),
                S_OK);
      const Outcome width = invoke(proxy.Get(), L"GetByte_Pf", Arguments().text(u"中a").int16(0));
      EXPECT_EQ(shown(value_of(width.value.get())), "3");
      proxy.Reset();
      done = true;
    });
    pump_messages_until(done);
    other.join();
    EXPECT_EQ(can_unload(), S_OK) << "round " << round;
  }
  FreeLibrary(keeps_loaded);
}

TEST(Life, EightThreadsUnderLoad) {
  const Apartment apartment;
  auto keeps_loaded = create(L"Corvelle.ClsValidate");
  const auto load = [](std::chrono::milliseconds time) {
    std::atomic<bool> end = false;
    std::atomic<std::int64_t> rounds = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
      threads.emplace_back([&, i] {
        const Apartment own;
        for (int round = i; !end && !::testing::Test::HasFailure(); round += 8, ++rounds) use_component(round);
      });
    }
    std::this_thread::sleep_for(time);
    end = true;
    for (std::thread& thread : threads) thread.join();
    EXPECT_GT(rounds, 8);
    std::printf("  %lld rounds in %lld ms\n", static_cast<long long>(rounds), static_cast<long long>(time.count()));
  };
  load(std::chrono::milliseconds(soaking() ? 5'000 : 500));
  const Holdings before;
  load(std::chrono::milliseconds(soaking() ? 60'000 : 1'500));
  before.expect_no_more_now();
  keeps_loaded.Reset();
  EXPECT_TRUE(unload_component()) << "the count of objects is not back at zero";
}

// Objects of three threads are alive, one thread is inside calls, one has an exception's texts on it.
[[noreturn]] void end_the_process_with_objects_alive() {
  std::atomic<int> ready = 0;
  for (int i = 0; i < 3; ++i) {
    std::thread([&ready, i] {
      CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
      use_component(i);
      auto* left_alive = create(L"Corvelle.ClsValidate").Detach();
      ++ready;
      while (i == 0) invoke(left_alive, L"GetByte_Pf", Arguments().text(u"中a").int16(0));
      Sleep(INFINITE);
    }).detach();
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  create(L"Corvelle.ClsVexApp").Detach();
  use_component(3);
  while (ready < 3) Sleep(1);
  std::exit(::testing::Test::HasFailure() ? 1 : 0);
}

TEST(LifeDeathTest, TheProcessEndsWithObjectsAlive) {
  ::testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(end_the_process_with_objects_alive(), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace corvelle::testing
