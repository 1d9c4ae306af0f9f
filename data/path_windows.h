// data/path_windows.h - paths as the system takes them.
#pragma once

#include <string>
#include <string_view>

namespace corvelle {

// `full_path`, a full path, in the form that the system takes at any length and leaves as it is.
//   long_path(L"C:\\data\\a.mdb") == L"\\\\?\\C:\\data\\a.mdb"
//   long_path(L"\\\\server\\share\\a.mdb") == L"\\\\?\\UNC\\server\\share\\a.mdb"
// One that is in that form, or names a device, comes back unchanged.
std::wstring long_path(std::wstring_view full_path);

// Whether `path` leads to a device and to no file: its last part is one of the names that the system reserves in every
// folder, whatever is behind its first point, or it is below \\.\ without a drive.
//   names_a_device(L"C:\\data\\nul.txt"), names_a_device(L"COM1:"), !names_a_device(L"C:\\data\\nul\\a.txt")
// A path that begins with \\?\ is taken by its letters, so reserved names are names there.
bool names_a_device(std::wstring_view path);

}  // namespace corvelle
