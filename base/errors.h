// base/errors.h - the errors that an operation can end with.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace corvelle {

// The published numbers of the run-time errors.
enum class ErrorNumber : std::int32_t {
  invalid_argument = 5,
  overflow = 6,
  type_mismatch = 13,
  object_not_set = 91,
  object_required = 424,
  no_such_member = 438,
};

// Which argument of which operation an error is about, in their published spelling.
struct Argument {
  std::u16string_view operation;
  std::u16string_view name;
};

// An error of the system's own. Its description names operation, argument and value.
class RuntimeError : public std::exception {
 public:
  RuntimeError(ErrorNumber number, std::u16string description)
      : number_(number), description_(std::move(description)) {}

  ErrorNumber number() const noexcept { return number_; }
  const std::u16string& description() const noexcept { return description_; }
  const char* what() const noexcept override;  // the error's name in English, "overflow"

 private:
  ErrorNumber number_;
  std::u16string description_;
};

// An error that an object of the host answered with; it reaches the caller as it came.
class HostError : public std::exception {
 public:
  HostError(std::int32_t hresult, std::u16string description, std::u16string source)
      : hresult_(hresult), description_(std::move(description)), source_(std::move(source)) {}

  std::int32_t hresult() const noexcept { return hresult_; }
  const std::u16string& description() const noexcept { return description_; }
  const std::u16string& source() const noexcept { return source_; }
  const char* what() const noexcept override { return "error of a host object"; }

 private:
  std::int32_t hresult_;
  std::u16string description_;
  std::u16string source_;
};

// "OPERATION: ARGUMENT COMPLAINT", as errors are described.
std::u16string sentence(Argument where, std::u16string_view complaint);

// Throws a RuntimeError described as "OPERATION: ARGUMENT COMPLAINT", for example
//   raise(ErrorNumber::overflow, {u"Center", u"Str"}, u"has 32767 characters")
//   describes itself as "Center: Str has 32767 characters".
[[noreturn]] void raise(ErrorNumber number, Argument where, std::u16string_view complaint);

// `value` in decimal digits, for descriptions: decimal_text(-4) == u"-4".
std::u16string decimal_text(std::int64_t value);

// `value` between double quotes, cut after 40 characters with "…", for descriptions.
std::u16string in_quotes(std::u16string_view value);

}  // namespace corvelle
