// tests/component/host.h - a host for the tests: creates the classes by ProgID and calls them both ways.
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "component/automation.h"
#include "component/interfaces.h"
#include "tests/support/operation_case.h"

namespace corvelle::testing {

using Microsoft::WRL::ComPtr;

// A single-threaded apartment for the length of a test.
class Apartment {
 public:
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

// A new object of the registered class `prog_id`; null, with a test failure, where that cannot be had.
ComPtr<IDispatch> create(const wchar_t* prog_id);
ComPtr<_ClsValidate> create_validate();
ComPtr<_ClsVexApp> create_vex_app();

// The class factory of `class_id`; null, with a test failure, where that cannot be had.
ComPtr<IClassFactory> factory_of(REFCLSID class_id);

// What came of a late-bound call.
struct Outcome {
  HRESULT result = E_UNEXPECTED;
  ScopedVariant value;
  HRESULT scode = S_OK;  // the operation's own HRESULT, when `result` is DISP_E_EXCEPTION
  std::u16string description;
  std::u16string source;
  UINT wrong_argument = 99;  // 99 while untouched
};

// One argument list in the order of the parameters; owned by the caller of `invoke`.
class Arguments {
 public:
  Arguments() = default;
  ~Arguments();
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  // Each appends one argument and gives the list back, so that calls chain.
  Arguments& text(std::u16string_view content);
  Arguments& int16(SHORT value);
  Arguments& int32(LONG value);
  Arguments& real(double value);
  Arguments& date(double value);
  Arguments& boolean(bool value);
  Arguments& null_text();
  Arguments& empty();
  Arguments& missing();                  // as script hosts mark an argument that was left out
  Arguments& borrowed(VARIANT value);    // by-reference variants and objects; nothing is freed
  Arguments& value(const Value& value);  // a row's argument

  // Names the last argument: it goes to parameter `place`, wherever it stands.
  Arguments& at(DISPID place);

  DISPPARAMS parameters() const;  // valid while the list lives and is not added to

 private:
  struct Entry {
    VARIANT variant;
    bool owned;
    std::optional<DISPID> place;
  };

  Arguments& add(VARIANT variant, bool owned);

  std::vector<Entry> entries_;
  mutable std::vector<VARIANT> reversed_;
  mutable std::vector<DISPID> places_;
};

// The DISPID of `name`. DISPID_UNKNOWN where the object has none.
DISPID dispid_of(IDispatch* object, const wchar_t* name);

// Calls `dispid` as script hosts do.
Outcome invoke(IDispatch* object, DISPID dispid, const Arguments& arguments,
               WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET);
Outcome invoke(IDispatch* object, const wchar_t* name, const Arguments& arguments);

// The thread's error information, which is taken: its description, none where there is none.
std::optional<std::u16string> error_description();

// A VARIANT as a row's value.
Value value_of(const VARIANT& variant);

// A VARIANT with `object`, which it borrows.
VARIANT object_variant(IDispatch* object);

// A VT_BYREF VARIANT that points at `target`.
VARIANT reference_to(SHORT* target);
VARIANT reference_to(BSTR* target);
VARIANT reference_to(VARIANT* target);

}  // namespace corvelle::testing
