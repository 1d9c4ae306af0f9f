// console/list.h - corvelle list
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

#include "console/output.h"

namespace corvelle::console {

// Prints every operation with its parameters, defaults and help text, from the registered type library, or else from
// the one beside this program.
ExitStatus list_operations(const Streams& streams);

// "Center(Str As String) As String" for an operation of `object`, by its type information; empty where it has none.
std::wstring signature_of(IDispatch* object, const std::wstring& operation);

}  // namespace corvelle::console
