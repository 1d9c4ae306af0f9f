// component/boundary.h - the guard that every published method runs its operation in.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <type_traits>

#include "component/automation.h"
#include "component/error_report.h"

namespace corvelle {
namespace internal {

inline void store(BSTR* result, Text&& text) { *result = bstr_of(std::move(text)); }
inline void store(double* result, double number) { *result = number; }
inline void store(SHORT* result, std::int16_t number) { *result = number; }
inline void store(VARIANT_BOOL* result, bool truth) { *result = truth ? VARIANT_TRUE : VARIANT_FALSE; }
inline void store(VARIANT* result, Text&& text) {
  V_BSTR(result) = bstr_of(std::move(text));
  V_VT(result) = VT_BSTR;
}

inline void clear(VARIANT* result) { VariantInit(result); }
template <class Result>
void clear(Result* result) {
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

// Runs `operation`; an exception becomes an HRESULT with error information. Error information of an earlier call is
// cleared first. No exception leaves.
template <class Call>
HRESULT guarded(const ClassDescription& source, Call&& operation) noexcept {
  forget_error();
  try {
    operation();
    return S_OK;
  } catch (...) {
    return report_current_exception(source);
  }
}

// Likewise, and stores what `operation` returns in `*result`, which holds nothing after a failure; a null `result` is
// E_POINTER. An operation that returns nothing leaves a VARIANT result empty.
template <class Result, class Call>
HRESULT answer(const ClassDescription& source, Result* result, Call&& operation) noexcept {
  if (result == nullptr) return E_POINTER;
  internal::clear(result);
  return guarded(source, [&] {
    if constexpr (std::is_void_v<std::invoke_result_t<Call>>) {
      operation();
    } else {
      internal::store(result, operation());
    }
  });
}

}  // namespace corvelle
