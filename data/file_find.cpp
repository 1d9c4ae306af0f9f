#include "data/file_find.h"

#include "base/errors.h"
#include "base/slice.h"

namespace corvelle {

Result<bool> File_Find(std::u16string_view FilePath) {
  return File_Find(FilePath, [](std::u16string_view pattern) { return finds_ordinary_file(pattern); });
}

Result<bool> File_Find(std::u16string_view FilePath,
                       FunctionRef<Result<bool>(std::u16string_view pattern)> finds_file) {
  const std::u16string_view pattern = trimmed(FilePath);
  Result<bool> found = finds_file(pattern);
  if (found.failed()) return found;
  return *found && !pattern.empty();
}

Error search_error(std::u16string_view pattern, std::int32_t hresult, std::u16string_view message) noexcept {
  return Error(hresult, {u"File_Find", u"FilePath"}, {in_quotes(pattern), u": ", message});
}

}  // namespace corvelle
