// console/call.h - corvelle call
#pragma once

#include <string>
#include <vector>

#include "console/output.h"

namespace corvelle::console {

// Calls "ClsValidate.Set_String1" with these arguments and prints what came of it.
ExitStatus call_operation(const std::wstring& operation, const std::vector<std::wstring>& arguments,
                          const Streams& streams);

}  // namespace corvelle::console
