#include "data/file_find.h"

#include "base/errors.h"
#include "base/slice.h"

namespace corvelle {

bool File_Find(std::u16string_view FilePath) {
  return File_Find(FilePath, [](std::u16string_view pattern) { return finds_ordinary_file(pattern); });
}

bool File_Find(std::u16string_view FilePath, FunctionRef<bool(std::u16string_view pattern)> finds_file) {
  const std::u16string_view pattern = trimmed(FilePath);
  return finds_file(pattern) && !pattern.empty();
}

void raise_search_error(std::u16string_view pattern, std::int32_t hresult, std::u16string_view message) {
  throw HostError(hresult, (u"File_Find: FilePath " + in_quotes(pattern) + u": ").append(message), u"");
}

}  // namespace corvelle
