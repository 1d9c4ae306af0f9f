// base/result.h - what an operation gives: a value, or the error that it ended with.
#pragma once

#include <utility>

#include "base/errors.h"

namespace corvelle {

// A value or an error. The value may be used only where it has not failed.
//   Result<Text> field = getStr_Pf(u"a,b,", 2, u",");
//   if (field.failed()) return field.take_error();
//   use(*field);
template <class Value>
class [[nodiscard]] Result {
 public:
  // NOLINTBEGIN(google-explicit-constructor): a function returns the value, or the error, as it is
  Result(Value value) noexcept : value_(std::move(value)) {
    if constexpr (requires { value_.failed(); }) {
      if (value_.failed()) error_ = out_of_memory();
    }
  }
  Result(Error&& error) noexcept : error_(std::move(error)) {}
  // NOLINTEND(google-explicit-constructor)

  bool failed() const noexcept { return static_cast<bool>(error_); }

  Value& operator*() & noexcept { return value_; }
  const Value& operator*() const& noexcept { return value_; }
  Value&& operator*() && noexcept { return std::move(value_); }
  Value* operator->() noexcept { return &value_; }
  const Value* operator->() const noexcept { return &value_; }

  // The error, none where there is a value; taken, it is here no more.
  const Error& error() const noexcept { return error_; }
  Error take_error() noexcept { return std::move(error_); }

 private:
  Value value_ = {};
  Error error_;
};

}  // namespace corvelle
