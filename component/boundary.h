// component/boundary.h - the guard that every published method runs its operation in.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <type_traits>
#include <utility>

#include "base/result.h"
#include "component/automation.h"
#include "component/error_report.h"

namespace corvelle {
namespace internal {

inline Error stored(BSTR* result, Text&& text) {
  *result = bstr_of(std::move(text));
  return *result != nullptr ? Error() : out_of_memory();
}
inline Error stored(double* result, double number) {
  *result = number;
  return {};
}
inline Error stored(SHORT* result, std::int16_t number) {
  *result = number;
  return {};
}
inline Error stored(VARIANT_BOOL* result, bool truth) {
  *result = truth ? VARIANT_TRUE : VARIANT_FALSE;
  return {};
}
inline Error stored(VARIANT* result, Text&& text) {
  Error error = stored(&V_BSTR(result), std::move(text));
  if (!error) V_VT(result) = VT_BSTR;
  return error;
}
// Of an operation that gives nothing; a VARIANT for its result stays empty.
inline Error stored(VARIANT* /*result*/, Error&& error) { return std::move(error); }
template <class Stored, class Given>
Error stored(Stored* result, Result<Given>&& given) {
  return given.failed() ? given.take_error() : stored(result, *std::move(given));
}

inline void clear(VARIANT* result) { VariantInit(result); }
template <class Stored>
void clear(Stored* result) {
  *result = {};
}

}  // namespace internal

// Releases error information. Where it is an object of the host's own, the host's code runs, and may release all that
// keeps the module loaded.
void release_error(IErrorInfo* error) noexcept;

// Gives up the error information that an earlier call left on this thread.
inline void forget_error() noexcept {
  IErrorInfo* left = nullptr;
  if (GetErrorInfo(0, &left) == S_OK) release_error(left);
}

// Runs `operation`, which gives an Error; that becomes an HRESULT with error information. Error information of an
// earlier call is cleared first.
template <class Call>
HRESULT guarded(const ClassDescription& source, Call&& operation) noexcept {
  forget_error();
  const Error error = operation();
  return error ? report(error, source) : S_OK;
}

// Likewise, and stores what `operation` gives in `*result`, which holds nothing after a failure; a null `result` is
// E_POINTER.
template <class Stored, class Call>
HRESULT answer(const ClassDescription& source, Stored* result, Call&& operation) noexcept {
  if (result == nullptr) return E_POINTER;
  internal::clear(result);
  return guarded(source, [&] { return internal::stored(result, operation()); });
}

}  // namespace corvelle
