#include <algorithm>
#include <cstdlib>
#include <limits>

#include "base/text.h"
#include "base/text_storage.h"

namespace corvelle {

void TextStorageDeleter::operator()(char16_t* storage) const noexcept { std::free(storage); }

char16_t* allocate_text(std::size_t length) noexcept {
  if (length > std::numeric_limits<std::size_t>::max() / sizeof(char16_t) - 1) return nullptr;
  auto* storage = static_cast<char16_t*>(std::malloc((length + 1) * sizeof(char16_t)));
  if (storage != nullptr) storage[length] = u'\0';
  return storage;
}

char16_t* copy_text(std::u16string_view content) noexcept {
  char16_t* const storage = allocate_text(content.size());
  if (storage != nullptr) std::copy(content.begin(), content.end(), storage);
  return storage;
}

char16_t* shrink_text(char16_t* storage, std::size_t length) noexcept {
  auto* smaller = static_cast<char16_t*>(std::realloc(storage, (length + 1) * sizeof(char16_t)));
  if (smaller != nullptr) smaller[length] = u'\0';
  return smaller;
}

}  // namespace corvelle
