// data/long_path_windows.h - paths in the form that may be longer than 260 characters.
#pragma once

#include <string>
#include <string_view>

namespace corvelle {

// `full_path`, a full path, in the form that the system takes at any length and leaves as it is.
//   long_path(L"C:\\data\\a.mdb") == L"\\\\?\\C:\\data\\a.mdb"
//   long_path(L"\\\\server\\share\\a.mdb") == L"\\\\?\\UNC\\server\\share\\a.mdb"
// One that is in that form, or names a device, comes back unchanged.
std::wstring long_path(std::wstring_view full_path);

}  // namespace corvelle
