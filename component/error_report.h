// component/error_report.h - errors on their way between operations and automation.
#pragma once

#include <windows.h>

#include "base/errors.h"
#include "component/class_description.h"

namespace corvelle {

// Sets the thread's error information to `error`, with the class as the source of those that have none, and gives its
// HRESULT.
HRESULT report(const Error& error, const ClassDescription& source) noexcept;

// The error `failure` of a call, with the texts of the thread's error information, which it takes; without texts where
// there is none.
Error error_of_call(HRESULT failure) noexcept;

}  // namespace corvelle
