// data/path_windows.h - paths as the system takes them.
#pragma once

#include <string_view>

#include "base/text.h"

namespace corvelle {

// `full_path`, a full path, in the form that the system takes at any length and leaves as it is.
//   long_path(u"C:\\data\\a.mdb") == u"\\\\?\\C:\\data\\a.mdb"
//   long_path(u"\\\\server\\share\\a.mdb") == u"\\\\?\\UNC\\server\\share\\a.mdb"
// One that is in that form, or names a device, comes back unchanged.
Text long_path(std::u16string_view full_path);

// Whether `path` leads to a device and to no file: its last part is one of the names that the system reserves in every
// folder, whatever is behind its first point, or it is below \\.\ without a drive.
//   names_a_device(u"C:\\data\\nul.txt"), names_a_device(u"COM1:"), !names_a_device(u"C:\\data\\nul\\a.txt")
// A path that begins with \\?\ is taken by its letters, so reserved names are names there.
bool names_a_device(std::u16string_view path);

}  // namespace corvelle
