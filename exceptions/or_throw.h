// exceptions/or_throw.h - for those who would rather have errors thrown. The operations themselves throw nothing.
#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

#include "base/result.h"
#include "base/utf8.h"

namespace corvelle {

// An operation's error as an exception.
class Exception : public std::exception {
 public:
  explicit Exception(Error&& error) : shared_(std::make_shared<Shared>()) {
    for_each_utf8_byte(error.description(), [this](char byte) { shared_->description += byte; });
    shared_->error = std::move(error);
  }

  const Error& error() const noexcept { return shared_->error; }
  // Its description in UTF-8.
  const char* what() const noexcept override { return shared_->description.c_str(); }

 private:
  // By all copies: copying an exception must not fail.
  struct Shared {
    Error error;
    std::string description;
  };
  std::shared_ptr<Shared> shared_;
};

// The value, or the error thrown as an Exception.
//   Text field = or_throw(getStr_Pf(u"a,b,", 2, u","));
template <class Value>
Value or_throw(Result<Value>&& result) {
  if (result.failed()) throw Exception(result.take_error());
  return *std::move(result);
}

// Nothing, or the error thrown as an Exception.
//   or_throw(Set_Str(u"A-01"));
inline void or_throw(Error&& error) {
  if (error) throw Exception(std::move(error));
}

}  // namespace corvelle
