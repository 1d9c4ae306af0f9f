// tests/component/published_call.h - calls of published operations that are known by their rows, both ways.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "component/class_description.h"
#include "tests/component/host.h"

namespace corvelle::testing {

// The ways to call an operation.
enum class Binding { late, early };

// An operation and an object to call it on.
struct Published {
  ComPtr<IDispatch> object;
  const ClassDescription* description = nullptr;
  const Operation* operation = nullptr;
  std::size_t place = 0;  // in vtable order
};

// One object of each class, for the apartment that it is made in.
class PublishedObjects {
 public:
  // "Center" is an operation of ClsValidate, "ClsVexApp.Set_Str" one of ClsVexApp.
  Published find(std::u16string_view name) const;
  std::vector<Published> all() const;

 private:
  ComPtr<IDispatch> validate_ = create(L"Corvelle.ClsValidate");
  ComPtr<IDispatch> vex_app_ = create(L"Corvelle.ClsVexApp");
};

// Whether IDispatch::Invoke is documented to answer so.
bool is_documented(HRESULT result);

// Appends a row's arguments as a script host passes them; a row's number is a date where the parameter is one.
void append(std::span<const Value> values, const Operation& operation, Arguments& arguments);

// A call through the vtable with exactly the declared types, as a compiled host makes it. Defaults stand for arguments
// that are not given.
class VtableCall {
 public:
  VtableCall(const Published& called, const Arguments& given);

  // Passes a null pointer for an in/out parameter; for the result where `parameter` is one behind the last.
  void pass_null(std::size_t parameter);
  HRESULT run();
  // What the caller has for a parameter, and may change or free while the call runs.
  VARIANT& held(std::size_t parameter) { return held_[parameter].get(); }
  // Gives up the references to the object, in the middle of the call, too.
  void release_object();
  // What the result parameter holds: nothing after a failure.
  const VARIANT& result() const { return held_.back().get(); }

 private:
  void store(std::size_t place, VARIANT* given);
  void receive_result();
  ComPtr<IUnknown> interface_of() const;

  Published called_;
  ComPtr<IUnknown> interface_;
  std::vector<ScopedVariant> held_;  // what arguments are made of; the last is for the result
  std::vector<VARIANT> arguments_;
  std::vector<VARTYPE> types_;
  std::vector<VARIANT*> pointers_;
};

}  // namespace corvelle::testing
