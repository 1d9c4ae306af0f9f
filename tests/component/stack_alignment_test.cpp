// 32-bit hosts call with a stack that is aligned to 4 bytes only.
#include <gtest/gtest.h>

#include <array>

#include "tests/component/process.h"
#include "tests/component/published_call.h"

namespace corvelle::testing {
namespace {

#ifndef _WIN64

// Calls `function` with `count` words of `arguments`, the stack having been `offset` bytes below a 16-byte boundary
// before they are pushed. Whoever is called takes them away, or does not.
__attribute__((naked)) HRESULT call_with_words(void* /*function*/, const std::uintptr_t* /*arguments*/,
                                               std::size_t /*count*/, int /*offset*/) {
  asm("pushl %ebp\n\t"
      "movl %esp, %ebp\n\t"
      "pushl %esi\n\t"
      "andl $-16, %esp\n\t"
      "subl 20(%ebp), %esp\n\t"
      "movl 12(%ebp), %esi\n\t"
      "movl 16(%ebp), %ecx\n"
      "1:\n\t"
      "testl %ecx, %ecx\n\t"
      "jz 2f\n\t"
      "decl %ecx\n\t"
      "pushl (%esi,%ecx,4)\n\t"
      "jmp 1b\n"
      "2:\n\t"
      "call *8(%ebp)\n\t"
      "leal -4(%ebp), %esp\n\t"
      "popl %esi\n\t"
      "popl %ebp\n\t"
      "ret\n\t");
}

template <class... Words>
HRESULT call_misaligned(int offset, void* function, Words... words) {
  const std::array<std::uintptr_t, sizeof...(words)> arguments = {(std::uintptr_t)words...};
  return call_with_words(function, arguments.data(), arguments.size(), offset);
}

void* member_of(void* object, std::size_t place) { return (*static_cast<void***>(object))[place]; }

class StackAlignment : public ::testing::TestWithParam<int> {
 protected:
  Apartment apartment_;
};

// Each operation late bound, of texts that are long enough for the vector code, against the same call by the compiler.
TEST_P(StackAlignment, IsAnyMultipleOfFourForInvoke) {
  constexpr std::size_t kInvoke = 6;
  const PublishedObjects published;
  int called = 0;
  for (const Published& each : published.all()) {
    SCOPED_TRACE(utf8(each.operation->name));
    for (const char16_t unit : {u'中', u'a', u'７', u' '}) {
      Arguments arguments;
      for (const Parameter& parameter : each.operation->parameters()) {
        switch (parameter.value_type()) {
          case VT_BSTR: arguments.text(std::u16string(300, unit)); break;
          case VT_DISPATCH:
          case VT_VARIANT: arguments.borrowed(object_variant(each.object.Get())); break;
          default: arguments.int16(2); break;
        }
      }
      const Outcome expected = invoke(each.object.Get(), each.operation->dispid, arguments, DISPATCH_METHOD);
      DISPPARAMS parameters = arguments.parameters();
      ScopedVariant result;
      EXCEPINFO exception = {};
      const HRESULT answer =
          call_misaligned(GetParam(), member_of(each.object.Get(), kInvoke), each.object.Get(), each.operation->dispid,
                          &IID_NULL, 0, DISPATCH_METHOD, &parameters, result.receive(), &exception, nullptr);
      EXPECT_EQ(answer, expected.result);
      EXPECT_EQ(exception.scode, expected.scode);
      EXPECT_EQ(shown(value_of(result.get())), shown(value_of(expected.value.get())));
      SysFreeString(exception.bstrDescription);
      SysFreeString(exception.bstrSource);
      ++called;
    }
  }
  EXPECT_EQ(called, 4 * 39);
}

TEST_P(StackAlignment, IsAnyMultipleOfFourForTheClassFactory) {
  constexpr std::size_t kCreateInstance = 3;
  const auto loads = create(L"Corvelle.ClsValidate");
  auto* get_class_object = reinterpret_cast<void*>(GetProcAddress(loaded_component(), "DllGetClassObject"));
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(call_misaligned(GetParam(), get_class_object, &kClsVexAppId, &IID_IClassFactory, factory.GetAddressOf()),
            S_OK);
  ComPtr<IDispatch> object;
  ASSERT_EQ(call_misaligned(GetParam(), member_of(factory.Get(), kCreateInstance), factory.Get(), nullptr,
                            &IID_IDispatch, object.GetAddressOf()),
            S_OK);
  EXPECT_EQ(invoke(object.Get(), L"Get_Str", Arguments()).result, S_OK);
}

TEST_P(StackAlignment, IsAnyMultipleOfFourForLoadingAndUnloading) {
  std::wstring path(MAX_PATH, L'\0');
  {
    const auto loads = create(L"Corvelle.ClsValidate");
    path.resize(GetModuleFileNameW(loaded_component(), path.data(), MAX_PATH));
  }
  ASSERT_TRUE(unload_component());
  auto* load = reinterpret_cast<void*>(&LoadLibraryW);
  auto* unload = reinterpret_cast<void*>(&FreeLibrary);
  EXPECT_NE(call_misaligned(GetParam(), load, path.c_str()), 0);
  EXPECT_NE(loaded_component(), nullptr);
  EXPECT_NE(call_misaligned(GetParam(), unload, loaded_component()), 0);
  EXPECT_EQ(loaded_component(), nullptr);
}

struct SlotUser {
  int offset;
  _ClsVexApp* object;
};

// The thread meets an error and fills its text slot, both of which leave something to be given back at its end.
DWORD WINAPI use_and_end(void* parameter) {
  const auto& user = *static_cast<SlotUser*>(parameter);
  const ScopedBstr text(u"kept");
  VARIANT stored;
  VARIANT result;
  user.object->Set_Str(text.get(), &stored);
  user.object->Replace_Str(ScopedBstr(std::u16string(40000, u'a')).get(), text.get(), text.get(), &result);
  call_misaligned(user.offset, reinterpret_cast<void*>(&ExitThread), 36);
  return 0;
}

TEST_P(StackAlignment, IsAnyMultipleOfFourForTheEndOfAThread) {
  const auto object = create_vex_app();
  SlotUser user = {GetParam(), object.Get()};
  const HANDLE thread = CreateThread(nullptr, 0, use_and_end, &user, 0, nullptr);
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(WaitForSingleObject(thread, 60'000), WAIT_OBJECT_0);
  DWORD status = 0;
  GetExitCodeThread(thread, &status);
  EXPECT_EQ(status, 36u);
  CloseHandle(thread);
}

INSTANTIATE_TEST_SUITE_P(Offsets, StackAlignment, ::testing::Values(0, 4, 8, 12));

#endif

}  // namespace
}  // namespace corvelle::testing
