// component/host_object.h - an object of the host, driven by the names of its members.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "base/errors.h"
#include "component/automation.h"
#include "data/first_error.h"

namespace corvelle {

// What all the host's objects of one call share, and must not outlive: the argument that they came with, and where the
// first error is kept. From that one on, none of them is asked for anything.
struct HostCall {
  Argument where;
  FirstError& errors;
};

// HostObject holds a reference to an object of the host as long as it lives. Making one never fails: an object that
// is none is an error when it is first used.
class HostObject {
 public:
  // Nothing.
  explicit HostObject(const HostCall& call) : call_(&call) {}
  // `object` may be null: Nothing.
  HostObject(IUnknown* object, const HostCall& call);
  // The object in `value`, which may be by reference.
  HostObject(const VARIANT& value, const HostCall& call);

  // The object; null for Nothing, and for what is none.
  IDispatch* get() const { return object_.Get(); }
  const HostCall& call() const { return *call_; }

  // Why there is no object to use `member` of: object not set (91) for Nothing, object required (424) for a value
  // that is no object, no such member (438) for an object without IDispatch.
  Error unusable(std::u16string_view member) const;
  // The same object through the interface `interface_id`, none where it does not provide that; Nothing stays Nothing.
  std::optional<HostObject> through(REFIID interface_id) const;

  // Whether this is an object with late binding, or Nothing.
  bool is_object() const { return object_ || complaint_ == ErrorNumber::object_not_set; }

 private:
  HostObject(std::optional<IUnknown*> object, const HostCall& call);

  Microsoft::WRL::ComPtr<IDispatch> object_;
  ErrorNumber complaint_ = ErrorNumber::object_not_set;  // for use without an object
  const HostCall* call_;
};

// The arguments of one call, given in the order in which people write them: 16-bit integers, texts, objects. It owns
// nothing, so what it is made of must outlive the call.
class HostArguments {
 public:
  template <class... Values>
  HostArguments(const Values&... values)  // NOLINT(google-explicit-constructor): calls read {row, col, text}
      : count_(sizeof...(Values)) {
    static_assert(sizeof...(Values) <= kMost);
    [[maybe_unused]] VARIANT* place = last_first_ + sizeof...(Values);
    (store(*--place, values), ...);
  }

  // Copying values that were just written would cost more than the rest of a call.
  HostArguments(const HostArguments&) = delete;
  HostArguments& operator=(const HostArguments&) = delete;

  VARIANT* last_first() { return last_first_; }  // the order that automation wants
  UINT count() const { return count_; }
  // Whether there was no memory for one of them.
  bool failed() const { return failed_; }

 private:
  static constexpr std::size_t kMost = 3;  // TextMatrix(row, column) = text

  void store(VARIANT& place, std::int16_t value);
  void store(VARIANT& place, const ScopedBstr& value);
  void store(VARIANT& place, const HostObject& value);

  VARIANT last_first_[kMost];
  UINT count_;
  bool failed_ = false;
};

// HostMember is one member of a host's object. Its name is looked up when it is first used, then remembered.
// Every use keeps an error of the call where the object cannot be used or lacks the member (438), and the object's own
// where it refuses the call; it then gives nothing.
//   HostMember(grid, u"Col").put({column});
class HostMember {
 public:
  // `object` and `name` must outlive the member.
  HostMember(const HostObject& object, std::u16string_view name) : object_(object), name_(name) {}
  // Likewise, for a member whose id automation itself fixes.
  HostMember(const HostObject& object, std::u16string_view name, DISPID id) : object_(object), name_(name), id_(id) {}

  // Reads the property, or calls the function, and gives its value.
  ScopedVariant get(HostArguments&& arguments = {});
  // Likewise, where the value is an object.
  HostObject object(HostArguments&& arguments = {});
  // Calls the procedure.
  void call(HostArguments&& arguments = {});
  // Assigns the last of `indexes_and_value`, a value and no object, to the property.
  void put(HostArguments&& indexes_and_value);

  // The property's text, and its number, which is no result: 32-bit code gives those in a register that raises what the
  // host has not masked. A value that is none is type mismatch (13), or overflow (6).
  Text text();
  void read_number(double& number);

 private:
  Error look_up(IDispatch& object);
  Error invoke(WORD flags, HostArguments&& arguments, ScopedVariant* result);
  void use(WORD flags, HostArguments&& arguments, ScopedVariant* result);
  void keep(Error&& error) const { object_.call().errors.keep(std::move(error)); }
  ScopedVariant converted(VARTYPE type, std::u16string_view kind);

  const HostObject& object_;
  std::u16string_view name_;
  std::optional<DISPID> id_;
};

// HostWalk goes through a collection by its enumerator, whose own error a step keeps.
//   for (walk.begin(tables); walk.advance();) use(walk.member());
class HostWalk {
 public:
  explicit HostWalk(const HostCall& call) : call_(call) {}

  // Begins at the first member. An object that is no collection lacks a member (438).
  void begin(const HostObject& collection);
  bool advance();
  HostObject member() const { return {item_.get(), call_}; }

 private:
  const HostCall& call_;
  Microsoft::WRL::ComPtr<IEnumVARIANT> enumerator_;
  ScopedVariant item_;
};
inline void HostArguments::store(VARIANT& place, std::int16_t value) {
  V_VT(&place) = VT_I2;
  V_I2(&place) = value;
}

inline void HostArguments::store(VARIANT& place, const ScopedBstr& value) {
  V_VT(&place) = VT_BSTR;
  V_BSTR(&place) = value.get();
  failed_ = failed_ || value.is_null();
}

inline void HostArguments::store(VARIANT& place, const HostObject& value) {
  V_VT(&place) = VT_DISPATCH;
  V_DISPATCH(&place) = value.get();
}

}  // namespace corvelle
