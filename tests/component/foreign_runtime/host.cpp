// foreign_runtime_host.exe LIBRARY… - a host with other C++ runtimes in its process. It loads the libraries in their
// order, meets every error with each that is a copy of the component as soon as it is there and once more when all are,
// and from many threads at once. Its exit status is the number of answers that were wrong.

#include <windows.h>

#include <atomic>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "component/automation.h"
#include "component/error_report.h"
#include "component/identifiers.h"
#include "component/interfaces.h"
#include "tests/hosts/late_bound.h"
#include "tests/support/component_file.h"

namespace corvelle::testing {
namespace {

using Microsoft::WRL::ComPtr;

std::atomic<int> wrong_answers = 0;

void expect(const char* what, HRESULT got, HRESULT wanted) {
  if (got == wanted) return;
  ++wrong_answers;
  std::printf("%s: %08lx instead of %08lx\n", what, static_cast<unsigned long>(got),
              static_cast<unsigned long>(wanted));
}

ComPtr<_ClsValidate> object_of(const ComponentFile& component) {
  ComPtr<IClassFactory> factory;
  ComPtr<_ClsValidate> object;
  expect("factory", component.class_object(kClsValidateId, IID_PPV_ARGS(&factory)), S_OK);
  if (factory) {
    expect("object",
           factory->CreateInstance(nullptr, kClsValidateInterfaceId, reinterpret_cast<void**>(object.GetAddressOf())),
           S_OK);
  }
  return object;
}

VARIANT variant_with(IDispatch* object) {
  VARIANT value;
  VariantInit(&value);
  if (object == nullptr) return value;
  V_VT(&value) = VT_DISPATCH;
  V_DISPATCH(&value) = object;
  return value;
}

// A grid whose number of columns is no number.
ComPtr<LateBound> strange_grid(Journal& journal) {
  ComPtr<LateBound> grid = owned(new LateBound(journal));
  grid->add(L"Row", DISPATCH_PROPERTYPUT, [](MemberCall&) {});
  grid->add(L"Cols", DISPATCH_METHOD | DISPATCH_PROPERTYGET, [](MemberCall& call) { call.give(u"many"); });
  return grid;
}

void meet_every_error(_ClsValidate& object) {
  const ScopedBstr fields(u"a,b,");
  const ScopedBstr comma(u",");
  const ScopedBstr too_long(std::u16string(32767, u'a'));
  SHORT number = 0;
  VARIANT_BOOL truth = VARIANT_FALSE;
  ScopedVariant nothing;
  Journal journal;
  const auto grid = strange_grid(journal);
  const auto expect_text = [](const char* what, HRESULT wanted, const std::function<HRESULT(BSTR*)>& call) {
    ScopedBstr text;
    expect(what, call(text.receive()), wanted);
  };
  expect_text("5", hresult_of(ErrorNumber::invalid_argument),
              [&](BSTR* result) { return object.getStr_Pf(fields.get(), 3, comma.get(), result); });
  expect("6", object.GetByte_Pf(too_long.get(), 0, &number), hresult_of(ErrorNumber::overflow));
  expect("13", object.SetGrdCenter(variant_with(grid.Get()), nothing.receive()),
         hresult_of(ErrorNumber::type_mismatch));
  expect("91", object.IFTable(nullptr, fields.get(), &truth), hresult_of(ErrorNumber::object_not_set));
  expect("424", object.ClearGrd(variant_with(nullptr)), hresult_of(ErrorNumber::object_required));
  expect("438", object.ClearGrd(variant_with(&object)), hresult_of(ErrorNumber::no_such_member));
  expect_text("want of memory", E_OUTOFMEMORY,
              [&](BSTR* result) { return object.Set_String1(fields.get(), 0x7FFFFFFF, 0, result); });
  expect_text("an error that is caught", S_OK,
              [&](BSTR* result) { return object.getStrDo_Pf(fields.get(), 3, comma.get(), result); });
  expect("an operation that never fails", object.CreateIndex(nullptr, fields.get(), fields.get(), fields.get()), S_OK);
}

// Threads that wait for each other: all begin when all are there, and none ends before all have met their error.
struct Meeting {
  _ClsValidate* object;
  std::atomic<int> left;
  HANDLE begin = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE all_failed = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE end = CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

DWORD WINAPI meet_first_error(void* parameter) {
  auto& meeting = *static_cast<Meeting*>(parameter);
  WaitForSingleObject(meeting.begin, INFINITE);
  BSTR text = nullptr;
  expect("in a thread", meeting.object->getStr_Pf(nullptr, 1, nullptr, &text),
         hresult_of(ErrorNumber::invalid_argument));
  if (--meeting.left == 0) SetEvent(meeting.all_failed);
  WaitForSingleObject(meeting.end, INFINITE);
  return 0;
}

// More than the component has places for at once.
void meet_errors_in_threads(const ComponentFile& component) {
  constexpr int kThreads = 600;
  constexpr SIZE_T kStack = 0x10000;
  const auto object = object_of(component);
  Meeting meeting = {object.Get(), kThreads};
  std::vector<HANDLE> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.push_back(
        CreateThread(nullptr, kStack, meet_first_error, &meeting, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
  }
  expect("the last thread is there", threads.back() == nullptr ? E_FAIL : S_OK, S_OK);
  SetEvent(meeting.begin);
  expect("all fail", static_cast<HRESULT>(WaitForSingleObject(meeting.all_failed, 60'000)), WAIT_OBJECT_0);
  SetEvent(meeting.end);
  for (HANDLE thread : threads) {
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
  }
}

bool is_component(const ComponentFile& library) {
  return GetProcAddress(library.module(), "DllGetClassObject") != nullptr;
}

int run(const std::vector<std::wstring>& libraries) {
  std::vector<std::unique_ptr<ComponentFile>> all;
  for (const std::wstring& library : libraries) {
    all.push_back(std::make_unique<ComponentFile>(library));
    if (is_component(*all.back())) meet_every_error(*object_of(*all.back()).Get());
  }
  for (const auto& library : all) {
    if (!is_component(*library)) continue;
    meet_every_error(*object_of(*library).Get());
    meet_errors_in_threads(*library);
  }
  return wrong_answers;
}

}  // namespace
}  // namespace corvelle::testing

int wmain(int count, wchar_t** arguments) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const int status = corvelle::testing::run({arguments + 1, arguments + count});
  SetErrorInfo(0, nullptr);
  CoUninitialize();
  return status;
}
