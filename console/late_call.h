// console/late_call.h - one late-bound call, as a script host makes it.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <optional>
#include <string>
#include <vector>

#include "component/automation.h"

namespace corvelle::console {

enum class Ending {
  value,    // the operation ran and gave `value`
  error,    // the operation ran and ended in an error
  refused,  // the call did not fit the operation, which did not run
};

// What came of a call.
struct Answer {
  Ending ending = Ending::refused;
  ScopedVariant value;
  HRESULT result = S_OK;  // of an error or a refusal
  std::wstring source;
  std::wstring description;
  std::optional<std::size_t> wrong_argument;  // of a type mismatch, where the object names one
  std::vector<std::size_t> changed;           // the arguments that the operation gave another value
};

// Calls `operation` of `object` by its name. The arguments are variables that go by reference, so that what the
// operation assigns to one is in it afterwards.
Answer call(IDispatch* object, const std::wstring& operation, std::vector<ScopedVariant>& arguments);

// A variable that holds `text`.
ScopedVariant text_variable(std::wstring_view text);

// The number by which hosts know an error: 6 for an overflow, 13 for a type mismatch. 0 where there is none.
int number_of(HRESULT result);

// A value as people write it: a text is itself, a boolean True or False, an empty value the empty text, and so is an
// array or what refers to a value elsewhere.
std::wstring shown(const VARIANT& value);

}  // namespace corvelle::console
