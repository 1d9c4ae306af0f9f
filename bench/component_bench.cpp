// Calls of the registered component, next to what they compete with: one line each, for scripts/bench.
#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cwchar>
#include <iterator>
#include <string>

#include "bench/ratio_table.h"
#include "bench/texts.h"
#include "component/automation.h"
#include "component/identifiers.h"
#include "component/interfaces.h"

namespace corvelle::bench {
namespace {

using Microsoft::WRL::ComPtr;

class Apartment {
 public:
  Apartment() { CoInitialize(nullptr); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

template <class Interface>
ComPtr<Interface> create(REFCLSID class_id, REFIID interface_id) {
  ComPtr<Interface> object;
  CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, interface_id,
                   reinterpret_cast<void**>(object.GetAddressOf()));
  return object;
}
ComPtr<_ClsValidate> create_validate() { return create<_ClsValidate>(kClsValidateId, kClsValidateInterfaceId); }

constexpr DISPID kGetByte = 0x6003001F;

// The two arguments of GetByte_Pf, last to first.
struct GetByteArguments {
  explicit GetByteArguments(BSTR text) {
    V_VT(&values[1]) = VT_BSTR;
    V_BSTR(&values[1]) = text;
    V_VT(&values[0]) = VT_I2;
    V_I2(&values[0]) = 0;
  }
  VARIANT values[2];
  DISPPARAMS parameters = {values, nullptr, 2, 0};
};

void compare_bindings(_ClsValidate* validate) {
  const ScopedBstr text(u"中文 abc");
  GetByteArguments arguments(text.get());
  ComPtr<ITypeInfo> type;
  validate->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type);
  const auto early = [&] {
    SHORT width = 0;
    validate->GetByte_Pf(text.get(), 0, &width);
    keep(width);
  };
  const auto late = [&] {
    VARIANT result;
    V_VT(&result) = VT_EMPTY;
    validate->Invoke(kGetByte, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments.parameters, &result, nullptr,
                     nullptr);
    keep(result);
  };
  const auto platform = [&] {
    VARIANT result;
    V_VT(&result) = VT_EMPTY;
    type->Invoke(validate, kGetByte, DISPATCH_METHOD, &arguments.parameters, &result, nullptr, nullptr);
    keep(result);
  };
  print_ratio("Invoke and vtable", "GetByte_Pf, 6 characters", "vtable call", late, early);
  print_ratio("Invoke and ITypeInfo", "GetByte_Pf, 6 characters", "ITypeInfo::Invoke", late, platform);
}

void compare_names(_ClsValidate* validate) {
  ComPtr<ITypeInfo> type;
  validate->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type);
  for (const wchar_t* name : {L"sumByte_Pf", L"getdecimalfmt_bus", L"Get_StrWidth"}) {
    auto* names = const_cast<wchar_t*>(name);
    DISPID id = 0;
    char label[64];
    std::snprintf(label, sizeof(label), "%ls", name);
    print_ratio(
        "GetIDsOfNames", label, "ITypeInfo::GetIDsOfNames",
        [&] { validate->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id); },
        [&] { type->GetIDsOfNames(&names, 1, &id); });
  }
}

void compare_creation() {
  CLSID dictionary_id = {};
  CLSIDFromProgID(L"Scripting.Dictionary", &dictionary_id);
  const auto keeps_loaded = create_validate();
  const auto keeps_peer_loaded = create<IDispatch>(dictionary_id, IID_IDispatch);
  print_ratio(
      "creation", "Corvelle.ClsValidate", "Scripting.Dictionary",
      [] { create<IDispatch>(kClsValidateId, IID_IDispatch); },
      [&] { create<IDispatch>(dictionary_id, IID_IDispatch); });
}

// A call through the vtable, whose result is given back, next to a copy of the text, which is given back likewise.
template <class Call>
void compare_with_copy(const char* name, const std::u16string& content, Call call) {
  const ScopedBstr text(content);
  print_ratio(
      "a text of 32,766", name, "copy",
      [&] {
        BSTR result = nullptr;
        call(text.get(), &result);
        SysFreeString(result);
      },
      [&] {
        const BSTR copy = SysAllocStringLen(text.get(), static_cast<UINT>(content.size()));
        keep(copy);
        SysFreeString(copy);
      });
}

std::u16string in_marks(std::u16string text) {
  text.front() = u'[';
  text.back() = u']';
  return text;
}

void compare_long_texts(_ClsValidate* validate, _ClsVexApp* vex_app) {
  const std::u16string words = repeated(kWords, kLongest);
  const std::u16string goods = repeated(kGoods, kLongest);
  const std::u16string prose = repeated(kProse, kLongest / 2);
  const ScopedBstr opening(u"[");
  const ScopedBstr closing(u"]");
  const ScopedBstr dash(u"-");
  const ScopedBstr slash(u"/");
  const auto center = [&](BSTR text, BSTR* result) { validate->Center(text, result); };
  const auto change = [&](BSTR text, BSTR* result) { validate->CharChange(text, result); };
  const auto width = [&](BSTR text, BSTR* result) { validate->Set_String1(text, 32766, 0, result); };
  const auto range = [&](BSTR text, BSTR* result) { validate->Get_String(text, 1, 32766, result); };
  compare_with_copy("Center, words", words, center);
  compare_with_copy("Center, goods", goods, center);
  compare_with_copy("GetStr, words", words, [&](BSTR text, BSTR* result) { validate->GetStr(text, result); });
  compare_with_copy("getNum, words", words, [&](BSTR text, BSTR* result) { validate->getNum(text, result); });
  compare_with_copy("CharChange, words", words, change);
  compare_with_copy("CharChange, goods", goods, change);
  compare_with_copy("Replace_Str, dates", repeated(kDates, kLongest), [&](BSTR text, BSTR* result) {
    VARIANT answer;
    vex_app->Replace_Str(text, dash.get(), slash.get(), &answer);
    *result = V_BSTR(&answer);
  });
  compare_with_copy("ConversionStr_Long, words of 32,670", repeated(kWords, 32670),
                    [&](BSTR text, BSTR* result) { vex_app->ConversionStr_Long(text, result); });
  compare_with_copy("ConversionStr_Short, words", words,
                    [&](BSTR text, BSTR* result) { vex_app->ConversionStr_Short(text, result); });
  compare_with_copy("Get_Str, marker at the end", in_marks(words),
                    [&](BSTR text, BSTR* result) { validate->Get_Str(text, closing.get(), result); });
  compare_with_copy("getString_P, markers at both ends", in_marks(words), [&](BSTR text, BSTR* result) {
    validate->getString_P(text, opening.get(), closing.get(), result);
  });
  compare_with_copy("Set_String1, words", words, width);
  compare_with_copy("Set_String1, prose of 16,383", prose, width);
  compare_with_copy("Get_String, words", words, range);
  compare_with_copy("Get_String, prose of 16,383", prose, range);
}

void compare_decimals(_ClsValidate* validate) {
  wchar_t pattern[] = L"#######0.0000";
  for (const char* text :
       {"7", "2.5", "3.14159", "-0.03125", "1,234.5", "123456789012.12345", "12345.678e-2", "  42 ", "abc"}) {
    const ScopedBstr number(std::u16string(text, text + std::char_traits<char>::length(text)));
    VARIANT value;
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = number.get();
    BSTR result = nullptr;
    print_ratio(
        "GetDecimalFmt_4, platform", text, "VarFormat",
        [&] {
          validate->GetDecimalFmt_4(number.get(), &result);
          SysFreeString(result);
        },
        [&] {
          result = nullptr;
          VarFormat(&value, pattern, 1, 1, 0, &result);
          SysFreeString(result);
        });
  }
}

void compare_dates(_ClsValidate* validate) {
  constexpr DATE kDate = 38719.6458;
  BSTR result = nullptr;
  print_ratio(
      "dateToStr_Pf", "38719.6458", "VariantTimeToSystemTime, _snwprintf, SysAllocString",
      [&] {
        validate->dateToStr_Pf(kDate, &result);
        SysFreeString(result);
      },
      [&] {
        SYSTEMTIME split;
        VariantTimeToSystemTime(kDate, &split);
        wchar_t digits[16];
        _snwprintf(digits, std::size(digits), L"%d%02d%02d", split.wYear, split.wMonth, split.wDay);
        result = SysAllocString(digits);
        SysFreeString(result);
      });
}

// What a host's thread does for a moment: calls of an object in its own apartment.
struct Caller {
  std::atomic<bool>* stop;
  std::atomic<int>* ready;
  std::atomic<bool>* go;
  long calls = 0;

  static DWORD WINAPI run(void* self) {
    auto* caller = static_cast<Caller*>(self);
    const Apartment apartment;
    const auto validate = create_validate();
    const ScopedBstr text(u"六角螺栓 M8×40");
    ++*caller->ready;
    while (!*caller->go) Sleep(0);
    long calls = 0;
    for (; !*caller->stop; ++calls) {
      BSTR result = nullptr;
      validate->Center(text.get(), &result);
      SysFreeString(result);
    }
    caller->calls = calls;
    return 0;
  }
};

// Nanoseconds of one call where `threads` apartments call at once for a tenth of a second.
template <std::size_t Threads>
double nanoseconds_of_a_call() {
  constexpr DWORD kMilliseconds = 100;
  std::atomic<bool> stop = false;
  std::atomic<bool> go = false;
  std::atomic<int> ready = 0;
  std::array<Caller, Threads> callers;
  std::array<HANDLE, Threads> threads;
  for (std::size_t i = 0; i < Threads; ++i) {
    callers[i] = {&stop, &ready, &go};
    threads[i] = CreateThread(nullptr, 0, Caller::run, &callers[i], 0, nullptr);
  }
  while (ready < static_cast<int>(Threads)) Sleep(1);
  const auto start = std::chrono::steady_clock::now();
  go = true;
  Sleep(kMilliseconds);
  stop = true;
  const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
  WaitForMultipleObjects(Threads, threads.data(), TRUE, INFINITE);
  long calls = 0;
  for (std::size_t i = 0; i < Threads; ++i) {
    CloseHandle(threads[i]);
    calls += callers[i].calls;
  }
  return spent.count() / static_cast<double>(calls);
}

void compare_apartments() {
  constexpr int kRounds = 15;
  Times best = {1e9, 1e9};
  for (int round = 0; round < kRounds; ++round) {
    best.subject = std::min(best.subject, nanoseconds_of_a_call<2>());
    best.peer = std::min(best.peer, nanoseconds_of_a_call<1>());
  }
  print_times("two apartments", "Center in two", "in one", best);
}

}  // namespace
}  // namespace corvelle::bench

int main() {
  using namespace corvelle::bench;
  const Apartment apartment;
  const auto validate = create_validate();
  const auto vex_app = create<_ClsVexApp>(corvelle::kClsVexAppId, corvelle::kClsVexAppInterfaceId);
  if (!validate || !vex_app) {
    std::fputs("component_bench: the component cannot be created; register the DLL\n", stderr);
    return 1;
  }
  compare_bindings(validate.Get());
  compare_names(validate.Get());
  compare_creation();
  compare_long_texts(validate.Get(), vex_app.Get());
  compare_decimals(validate.Get());
  compare_dates(validate.Get());
  compare_apartments();
  return 0;
}
