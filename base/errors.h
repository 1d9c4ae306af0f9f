// base/errors.h - the errors that an operation can end with, as values.
//
// An operation raises an error by giving it in place of its result (base/result.h).
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>

#include "base/short_text.h"

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

// The HRESULT of a run-time error: 0x800A0000 plus its number.
constexpr std::int32_t hresult_of(ErrorNumber number) {
  return static_cast<std::int32_t>(0x800A0000u + static_cast<std::uint32_t>(number));
}

// Which argument of which operation an error is about, in their published spelling.
struct Argument {
  std::u16string_view operation;
  std::u16string_view name;
};

// The pieces of a text, in their order.
using Pieces = std::initializer_list<std::u16string_view>;

// Error is what an operation ended with, or none: true where there is one. It is one pointer.
//   if (Error error = too_long(Str, {u"Center", u"Str"})) return error;
class [[nodiscard]] Error {
 public:
  Error() noexcept = default;

  // A run-time error described as "OPERATION: ARGUMENT COMPLAINT", and likewise one with a number of somebody else's:
  //   Error(ErrorNumber::overflow, {u"Center", u"Str"}, {u"has ", decimal_text(32767), u" characters"})
  //   describes itself as "Center: Str has 32767 characters".
  // Where there is no memory for that, it is out_of_memory().
  Error(ErrorNumber number, Argument where, Pieces complaint) noexcept : Error(hresult_of(number), where, complaint) {}
  Error(std::int32_t hresult, Argument where, Pieces complaint, std::u16string_view source = {}) noexcept;

  // An error that an object of the host answered with, as it came.
  Error(std::int32_t hresult, std::u16string_view description, std::u16string_view source) noexcept;

  explicit operator bool() const noexcept { return details_ != nullptr; }

  // Of an error that is one. The system's own errors have the HRESULT of their number, and no source; what a host's
  // object answered with has all as it came. Behind each text stands a NUL.
  std::int32_t hresult() const noexcept { return details_->hresult; }
  std::u16string_view description() const noexcept { return details_->description; }
  std::u16string_view source() const noexcept { return details_->source; }

  friend Error out_of_memory() noexcept;

 private:
  struct Details {
    std::int32_t hresult;
    std::u16string_view description;
    std::u16string_view source;
  };
  struct Deleter {
    void operator()(const Details* details) const noexcept;
  };
  static const Details kOutOfMemory;
  static const Details* details(std::int32_t hresult, Pieces beginning, Pieces rest, std::u16string_view source);

  std::unique_ptr<const Details, Deleter> details_;
};

// E_OUTOFMEMORY, which needs no memory itself.
Error out_of_memory() noexcept;

// `value` in decimal digits, for descriptions: decimal_text(-4) is "-4".
ShortText<20> decimal_text(std::int64_t value) noexcept;

// `value` between double quotes, cut after 40 characters with "…", for descriptions.
ShortText<43> in_quotes(std::u16string_view value) noexcept;

}  // namespace corvelle
