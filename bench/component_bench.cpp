// Calls of the registered component, next to what they compete with: one line each, for scripts/bench.
#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cwchar>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

constexpr DISPID kSumByte = 0x6003001E;
constexpr DISPID kGetByte = 0x6003001F;
constexpr DISPID kGetStrPf = 0x60030020;
constexpr DISPID kCenter = 0x60030024;
constexpr DISPID kGetString = 0x6003002F;
constexpr DISPID kSetString1 = 0x60030030;
constexpr DISPID kDateToStr = 0x60030034;
constexpr DISPID kGetDecimalFmt4 = 0x6003003D;

VARIANT argument(const ScopedBstr& text) {
  VARIANT value;
  V_VT(&value) = VT_BSTR;
  V_BSTR(&value) = text.get();
  return value;
}
VARIANT argument(SHORT number) {
  VARIANT value;
  V_VT(&value) = VT_I2;
  V_I2(&value) = number;
  return value;
}
VARIANT argument(LONG number) {
  VARIANT value;
  V_VT(&value) = VT_I4;
  V_I4(&value) = number;
  return value;
}
VARIANT date_argument(DATE date) {
  VARIANT value;
  V_VT(&value) = VT_DATE;
  V_DATE(&value) = date;
  return value;
}

// A late-bound call, whose result is given back as the one of a call through the vtable is.
struct LateCall {
  LateCall(DISPID operation, std::vector<VARIANT> from_last)
      : dispid(operation),
        arguments(std::move(from_last)),
        parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0} {}
  LateCall(const LateCall&) = delete;
  LateCall& operator=(const LateCall&) = delete;

  void operator()(IDispatch* object) {
    VARIANT result;
    V_VT(&result) = VT_EMPTY;
    object->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr);
    keep(result);
    if (V_VT(&result) == VT_BSTR) SysFreeString(V_BSTR(&result));
  }

  DISPID dispid;
  std::vector<VARIANT> arguments;
  DISPPARAMS parameters;
};

// Times both ways of calling one operation, and adds them to `all`.
template <class Early>
void compare_binding(Times& all, _ClsValidate* validate, const char* what, LateCall late, Early early) {
  const Times times = side_by_side([&] { late(validate); }, early);
  print_times("Invoke and vtable, each", what, "vtable call", times);
  all.subject += times.subject;
  all.peer += times.peer;
}

// The least that Invoke can be: it calls GetByte_Pf of `validate` with the arguments where they have to be, and looks
// at nothing.
class Forwarder final : public IDispatch {
 public:
  explicit Forwarder(_ClsValidate* validate) : validate_(validate) {}

  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*, UINT*) override {
    V_VT(result) = VT_I2;
    return validate_->GetByte_Pf(V_BSTR(&parameters->rgvarg[1]), V_I2(&parameters->rgvarg[0]), &V_I2(result));
  }

  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }

 private:
  _ClsValidate* validate_;
};

// A call through the vtable, `call`, whose text is given back.
template <class Call>
auto text_of_call(Call call) {
  return [call] {
    BSTR result = nullptr;
    call(&result);
    SysFreeString(result);
  };
}

// A constant would be handed over in two halves in 32 bits, which no host does; `keep` makes a variable of it.
constexpr DATE kDate = 38719.6458;

// Error information by itself: made, filled, set, and taken with its texts by whoever called.
void take_error() {
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, &information) != S_OK) return;
  ScopedBstr source;
  ScopedBstr description;
  information->GetSource(source.receive());
  information->GetDescription(description.receive());
  keep(description.get());
}

void bare_error_information() {
  ComPtr<ICreateErrorInfo> made;
  CreateErrorInfo(&made);
  made->SetGUID(kClsValidateInterfaceId);
  made->SetSource(const_cast<OLECHAR*>(L"Corvelle.ClsValidate"));
  made->SetDescription(const_cast<OLECHAR*>(L"getStr_Pf: Num is 9; Str has 4 fields ended by \",\""));
  ComPtr<IErrorInfo> information;
  made.As(&information);
  SetErrorInfo(0, information.Get());
  information.Reset();
  made.Reset();
  take_error();
}

// One failing call by both bindings; the caller takes the error as hosts do.
template <class Early>
void compare_failure(_ClsValidate* validate, const std::string& what, LateCall late, Early early) {
  print_ratio(
      "failing call", (what + ", late bound").c_str(), "bare error information",
      [&] {
        EXCEPINFO exception = {};
        VARIANT result;
        V_VT(&result) = VT_EMPTY;
        validate->Invoke(late.dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &late.parameters, &result,
                         &exception, nullptr);
        keep(exception);
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
      },
      bare_error_information);
  print_ratio(
      "failing call", (what + ", early bound").c_str(), "bare error information",
      [&] {
        early();
        take_error();
      },
      bare_error_information);
}

void compare_failures(_ClsValidate* validate) {
  const ScopedBstr fields(u"A-100,六角螺栓,M8×40,12.5,");
  const ScopedBstr comma(u",");
  const ScopedBstr too_long(std::u16string(32767, u'a'));
  BSTR result = nullptr;
  SHORT width = 0;
  compare_failure(validate, "getStr_Pf without the field",
                  {kGetStrPf, {argument(comma), argument(SHORT{9}), argument(fields)}},
                  [&] { validate->getStr_Pf(fields.get(), 9, comma.get(), &result); });
  compare_failure(validate, "Get_String from 0", {kGetString, {argument(LONG{4}), argument(LONG{0}), argument(fields)}},
                  [&] { validate->Get_String(fields.get(), 0, 4, &result); });
  compare_failure(validate, "GetByte_Pf of a text that is too long",
                  {kGetByte, {argument(SHORT{0}), argument(too_long)}},
                  [&] { validate->GetByte_Pf(too_long.get(), 0, &width); });
}

// What hosts call late bound, with short texts, as theirs are.
void compare_bindings(_ClsValidate* validate) {
  Times all = {};
  DATE date = kDate;
  const ScopedBstr mixed(u"中文 abc");
  const ScopedBstr goods(u"六角螺栓 M8×40");
  const ScopedBstr fields(u"A-100,六角螺栓,M8×40,12.5,");
  const ScopedBstr comma(u",");
  const ScopedBstr number(u"3.14159");
  const auto get_byte = [&] {
    SHORT width = 0;
    validate->GetByte_Pf(mixed.get(), 0, &width);
    keep(width);
  };
  compare_binding(all, validate, "GetByte_Pf", {kGetByte, {argument(SHORT{0}), argument(mixed)}}, get_byte);
  compare_binding(all, validate, "sumByte_Pf", {kSumByte, {argument(mixed)}}, [&] {
    double width = 0;
    validate->sumByte_Pf(mixed.get(), &width);
    keep(width);
  });
  compare_binding(all, validate, "Center", {kCenter, {argument(goods)}},
                  text_of_call([&](BSTR* result) { validate->Center(goods.get(), result); }));
  compare_binding(all, validate, "getStr_Pf", {kGetStrPf, {argument(comma), argument(SHORT{2}), argument(fields)}},
                  text_of_call([&](BSTR* result) { validate->getStr_Pf(fields.get(), 2, comma.get(), result); }));
  compare_binding(all, validate, "Set_String1",
                  {kSetString1, {argument(SHORT{0}), argument(LONG{20}), argument(goods)}},
                  text_of_call([&](BSTR* result) { validate->Set_String1(goods.get(), 20, 0, result); }));
  compare_binding(all, validate, "dateToStr_Pf", {kDateToStr, {date_argument(date)}}, text_of_call([&](BSTR* result) {
                    keep(date);
                    validate->dateToStr_Pf(date, result);
                  }));
  compare_binding(all, validate, "GetDecimalFmt_4", {kGetDecimalFmt4, {argument(number)}},
                  text_of_call([&](BSTR* result) { validate->GetDecimalFmt_4(number.get(), result); }));
  print_times("Invoke and vtable", "these seven together", "vtable call", all);

  Forwarder forwarder(validate);
  IDispatch* object = &forwarder;
  LateCall late(kGetByte, {argument(SHORT{0}), argument(mixed)});
  const auto forwarded = [&] {
    keep(object);
    late(object);
  };
  print_times("Invoke, the least", "GetByte_Pf, by an Invoke that looks at nothing", "vtable call",
              side_by_side(forwarded, get_byte));
}

void compare_with_type_information(_ClsValidate* validate) {
  const ScopedBstr text(u"中文 abc");
  LateCall late(kGetByte, {argument(SHORT{0}), argument(text)});
  ComPtr<ITypeInfo> type;
  validate->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type);
  print_ratio(
      "Invoke and ITypeInfo", "GetByte_Pf, 6 characters", "ITypeInfo::Invoke", [&] { late(validate); },
      [&] {
        VARIANT result;
        V_VT(&result) = VT_EMPTY;
        type->Invoke(validate, kGetByte, DISPATCH_METHOD, &late.parameters, &result, nullptr, nullptr);
        keep(result);
      });
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
  constexpr Timing kTiming = {1500, 4e5};  // Wine's server has a part in each creation, and its time varies much
  const Times times = side_by_side([] { create<IDispatch>(kClsValidateId, IID_IDispatch); },
                                   [&] { create<IDispatch>(dictionary_id, IID_IDispatch); }, kTiming);
  print_times("creation", "Corvelle.ClsValidate", "Scripting.Dictionary", times);
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

// What a result of `length` characters costs without any of its content: the allocation, a character written to each
// page, and the release. Next to a copy of the text that it would be made from.
void compare_allocation_with_copy(const char* name, UINT length, const std::u16string& content) {
  constexpr UINT kPage = 4096 / sizeof(OLECHAR);
  const ScopedBstr text(content);
  print_ratio(
      "long texts, allocation", name, "copy of the argument",
      [&] {
        const BSTR result = SysAllocStringLen(nullptr, length);
        for (UINT i = 0; i < length; i += kPage) result[i] = L'x';
        keep(result);
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

// The length of what `call` gives for `content`.
template <class Call>
UINT result_length(const std::u16string& content, Call call) {
  const ScopedBstr text(content);
  BSTR result = nullptr;
  call(text.get(), &result);
  const UINT length = SysStringLen(result);
  SysFreeString(result);
  return length;
}

void compare_long_allocations(_ClsValidate* validate, _ClsVexApp* vex_app) {
  const std::u16string words = repeated(kWords, 32670);
  const std::u16string goods = repeated(kGoods, kLongest);
  const UINT of_words =
      result_length(words, [&](BSTR text, BSTR* result) { vex_app->ConversionStr_Long(text, result); });
  const UINT of_goods = result_length(goods, [&](BSTR text, BSTR* result) { validate->CharChange(text, result); });
  compare_allocation_with_copy("ConversionStr_Long's result, SysAllocStringLen alone", of_words, words);
  compare_allocation_with_copy("CharChange's of goods, SysAllocStringLen alone", of_goods, goods);
}

void compare_decimal(_ClsValidate* validate, const char* row, const char* text) {
  wchar_t pattern[] = L"#######0.0000";
  const ScopedBstr number(std::u16string(text, text + std::char_traits<char>::length(text)));
  VARIANT value = argument(number);
  BSTR result = nullptr;
  print_ratio(
      row, text, "VarFormat",
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

void compare_decimals(_ClsValidate* validate) {
  for (const char* text :
       {"7", "2.5", "3.14159", "-0.03125", "1,234.5", "123456789012.12345", "12345.678e-2", "  42 ", "abc"}) {
    compare_decimal(validate, "GetDecimalFmt_4, platform", text);
  }
  // Only several of the user's symbols together say that these are no numbers.
  for (const char* text : {"M8x40", "12 kg", "12kg"}) compare_decimal(validate, "GetDecimalFmt_4, no number", text);
}

void compare_dates(_ClsValidate* validate) {
  DATE date = kDate;
  BSTR result = nullptr;
  const auto ours = [&] {
    keep(date);
    validate->dateToStr_Pf(date, &result);
    SysFreeString(result);
  };
  // The platform's own conversion, whose parts `print` writes.
  const auto platforms = [&](auto print) {
    return [&date, &result, print] {
      keep(date);
      SYSTEMTIME split;
      VariantTimeToSystemTime(date, &split);
      wchar_t digits[16];
      print(split, digits);
      result = SysAllocString(digits);
      SysFreeString(result);
    };
  };
  print_ratio("dateToStr_Pf, _snwprintf", "dateToStr_Pf", "VariantTimeToSystemTime, _snwprintf, SysAllocString", ours,
              platforms([](const SYSTEMTIME& split, wchar_t(&digits)[16]) {
                _snwprintf(digits, std::size(digits), L"%d%02d%02d", split.wYear, split.wMonth, split.wDay);
              }));
  print_ratio("dateToStr_Pf, GetDateFormat", "dateToStr_Pf", "VariantTimeToSystemTime, GetDateFormat, SysAllocString",
              ours, platforms([](const SYSTEMTIME& split, wchar_t(&digits)[16]) {
                GetDateFormatW(LOCALE_USER_DEFAULT, 0, &split, L"yyyyMMdd", digits,
                               static_cast<int>(std::size(digits)));
              }));
  print_ratio("dateToStr_Pf, allocation", "dateToStr_Pf", "SysAllocStringLen and SysFreeString alone", ours, [] {
    const BSTR text = SysAllocStringLen(nullptr, 8);
    keep(text);
    SysFreeString(text);
  });
}

using Clock = std::chrono::steady_clock;

// Threads are compared by their best moments: on a machine that others use too, two threads seldom run side by side for
// longer.
constexpr std::chrono::milliseconds kMoment(1);
constexpr std::size_t kMoments = 100;

// What a host's thread has of its own.
struct Host {
  Apartment apartment;
  ComPtr<_ClsValidate> validate = create_validate();
  ScopedBstr text{u"六角螺栓 M8×40"};
  LateCall get_byte{kGetByte, {argument(SHORT{0}), argument(text)}};
};

// When the threads are ready, and when they start; no thread writes to it while another one calls.
struct Start {
  std::atomic<int> ready = 0;
  std::atomic<Clock::rep> time = 0;
};

// A host's thread that makes `Call` again and again and counts the calls of each moment. No two share a cache line.
template <void (*Call)(Host&)>
struct alignas(256) Caller {
  Start* start = nullptr;
  std::array<long, kMoments> calls = {};

  static DWORD WINAPI run(void* self) {
    static_cast<Caller*>(self)->run();
    return 0;
  }

  void run() {
    constexpr int kCallsBetweenLooks = 32;  // at the clock
    Host host;
    ++start->ready;
    while (start->time == 0) YieldProcessor();
    const Clock::time_point begin(Clock::duration(start->time));
    for (;;) {
      for (int i = 0; i < kCallsBetweenLooks; ++i) Call(host);
      const auto moment = static_cast<std::size_t>((Clock::now() - begin) / kMoment);
      if (moment >= kMoments) return;
      calls[moment] += kCallsBetweenLooks;
    }
  }
};

// Nanoseconds of one call in the best moment of `Threads` apartments that call at once; all count as the slowest.
template <std::size_t Threads, void (*Call)(Host&)>
double nanoseconds_in_apartments() {
  Start start;
  std::array<Caller<Call>, Threads> callers;
  std::array<HANDLE, Threads> threads;
  for (std::size_t i = 0; i < Threads; ++i) {
    callers[i].start = &start;
    threads[i] = CreateThread(nullptr, 0, Caller<Call>::run, &callers[i], 0, nullptr);
  }
  while (start.ready < static_cast<int>(Threads)) Sleep(1);
  start.time = Clock::now().time_since_epoch().count();
  WaitForMultipleObjects(Threads, threads.data(), TRUE, INFINITE);
  for (const HANDLE thread : threads) CloseHandle(thread);
  long most = 1;
  for (std::size_t moment = 0; moment < kMoments; ++moment) {
    long slowest = callers[0].calls[moment];
    for (const auto& caller : callers) slowest = std::min(slowest, caller.calls[moment]);
    most = std::max(most, static_cast<long>(Threads) * slowest);
  }
  return std::chrono::duration<double, std::nano>(kMoment).count() / static_cast<double>(most);
}

template <void (*Call)(Host&)>
void compare_apartments(const char* row, const char* what, int rounds = 10) {
  Times best = {1e9, 1e9};
  for (int round = 0; round < rounds; ++round) {
    best.subject = std::min(best.subject, nanoseconds_in_apartments<2, Call>());
    best.peer = std::min(best.peer, nanoseconds_in_apartments<1, Call>());
  }
  print_times(row, what, "the same in one", best);
}

void get_byte(Host& host) {
  SHORT width = 0;
  host.validate->GetByte_Pf(host.text.get(), 0, &width);
  keep(width);
}
void sum_byte(Host& host) {
  double width = 0;
  host.validate->sumByte_Pf(host.text.get(), &width);
  keep(width);
}
void get_byte_late(Host& host) { host.get_byte(host.validate.Get()); }
void center(Host& host) {
  BSTR result = nullptr;
  host.validate->Center(host.text.get(), &result);
  SysFreeString(result);
}
void allocate(Host& host) {
  const BSTR text = SysAllocStringLen(host.text.get(), SysStringLen(host.text.get()));
  keep(text);
  SysFreeString(text);
}

// The row is of what the component does itself; what it hands out as a text is bound by the system's allocation.
void compare_apartments() {
  compare_apartments<get_byte>("two apartments", "GetByte_Pf in two apartments", 30);
  compare_apartments<sum_byte>("two apartments, others", "sumByte_Pf in two apartments");
  compare_apartments<get_byte_late>("two apartments, others", "Invoke of GetByte_Pf in two apartments");
  compare_apartments<center>("two apartments, others", "Center in two apartments");
  compare_apartments<allocate>("two apartments, others", "SysAllocStringLen and SysFreeString alone, in two");
}

}  // namespace
}  // namespace corvelle::bench

// component_bench [SECTION]: all comparisons, or those of a section: bindings, failures, names, creation, copies,
// decimals, dates, apartments.
int main(int count, char** arguments) {
  using namespace corvelle::bench;
  const auto wanted = [&](std::string_view section) { return count < 2 || arguments[1] == section; };
  const Apartment apartment;
  const auto validate = create_validate();
  const auto vex_app = create<_ClsVexApp>(corvelle::kClsVexAppId, corvelle::kClsVexAppInterfaceId);
  if (!validate || !vex_app) {
    std::fputs("component_bench: the component cannot be created; register the DLL\n", stderr);
    return 1;
  }
  if (wanted("bindings")) {
    compare_bindings(validate.Get());
    compare_with_type_information(validate.Get());
  }
  if (wanted("failures")) compare_failures(validate.Get());
  if (wanted("names")) compare_names(validate.Get());
  if (wanted("creation")) compare_creation();
  if (wanted("copies")) {
    compare_long_texts(validate.Get(), vex_app.Get());
    compare_long_allocations(validate.Get(), vex_app.Get());
  }
  if (wanted("decimals")) compare_decimals(validate.Get());
  if (wanted("dates")) compare_dates(validate.Get());
  if (wanted("apartments")) compare_apartments();
  return 0;
}
