// console/own_tools.h - further runs of this package's corvelle.exe, for what must not happen in this process.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "console/examination.h"

namespace corvelle::console {

// The arguments by which one run of the tool asks another to do its part.
inline constexpr wchar_t kTryOut[] = L"try-out";            // try_out
inline constexpr wchar_t kReadLibrary[] = L"read-library";  // read_library, of the file named behind it

// The package's own tool of that bitness: this program, or the one in the folder win32 or win64 beside its own. Never
// one that a registration leads to.
std::optional<std::wstring> own_tool(Bitness bitness);

// Runs `tool` and waits for the result, which it ends with as its status: of one that crashes, the system's code. None
// where it cannot be started.
std::optional<HRESULT> result_of_tool(const std::wstring& tool, const std::wstring& arguments);

}  // namespace corvelle::console
