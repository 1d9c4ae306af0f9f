// data/file_find.h - whether a file exists.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/function_ref.h"
#include "base/result.h"

namespace corvelle {

// Whether `FilePath`, trimmed of spaces (U+0020), matches an ordinary file: one that is not hidden, not a system file
// and no directory. * and ? in the last component are wildcards. Nothing that matches, a missing folder, a directory,
// and a path of spaces only give false. The file system is only read, and nothing is held open.
//   File_Find(u" C:\\data\\*.mdb ") == true where that folder has an ordinary file with such a name
// Raises the system's own code and message where the search itself fails: a malformed path, a drive
// that is not ready.
Result<bool> File_Find(std::u16string_view FilePath);

// Likewise, by the given search instead of the platform's; it runs even for an empty pattern.
Result<bool> File_Find(std::u16string_view FilePath, FunctionRef<Result<bool>(std::u16string_view pattern)> finds_file);

// The platform's search: goes through what matches `pattern` up to the first ordinary file; false where there is none.
// On Windows by the system's directory search, whose rules for names hold; elsewhere * stands for any characters
// and ? for one, a file whose name begins with a dot is hidden, and only regular files are ordinary.
Result<bool> finds_ordinary_file(std::u16string_view pattern);

// The error `hresult` of a search for `pattern`, with the system's own `message`.
Error search_error(std::u16string_view pattern, std::int32_t hresult, std::u16string_view message) noexcept;

}  // namespace corvelle
