// component/error_report.h - errors on their way between operations and automation.
#pragma once

#include <windows.h>

#include <string_view>

#include "base/errors.h"
#include "component/class_description.h"

namespace corvelle {

// The HRESULT of a run-time error: 0x800A0000 plus its number.
constexpr HRESULT hresult_of(ErrorNumber number) {
  return static_cast<HRESULT>(0x800A0000u + static_cast<unsigned>(number));
}

// The HRESULT for the exception being handled, with the thread's error information set: a RuntimeError by its
// number, with the class as source; a HostError as the host's object gave it; std::bad_alloc as E_OUTOFMEMORY.
// The only place that names exceptions; call it from a catch block.
HRESULT report_current_exception(const ClassDescription& source) noexcept;

// Throws a HostError for `failure`, with the thread's error information, which it takes. `otherwise` describes a
// failure of which nobody says anything.
[[noreturn]] void throw_error(HRESULT failure, std::u16string otherwise);

// Likewise for an own operation that was called, where `result` is a failure.
void throw_if_failed(HRESULT result);

}  // namespace corvelle
