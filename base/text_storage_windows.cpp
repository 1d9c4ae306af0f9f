#include <windows.h>

#include <oleauto.h>

#include <limits>

#include "base/text.h"
#include "base/text_storage.h"

namespace corvelle {

void TextStorageDeleter::operator()(char16_t* storage) const noexcept {
  SysFreeString(reinterpret_cast<BSTR>(storage));
}

namespace {

// A BSTR of `length` units, copied from `content` where that is not null. It counts its bytes in 32 bits, header and
// terminator included, and what the system rounds that up to must fit, too.
char16_t* bstr_of(const char16_t* content, std::size_t length) {
  if (length > std::numeric_limits<UINT>::max() / sizeof(OLECHAR) - 32) return nullptr;
  return reinterpret_cast<char16_t*>(
      SysAllocStringLen(reinterpret_cast<const OLECHAR*>(content), static_cast<UINT>(length)));
}

}  // namespace

char16_t* allocate_text(std::size_t length) noexcept { return bstr_of(nullptr, length); }

char16_t* copy_text(std::u16string_view content) noexcept { return bstr_of(content.data(), content.size()); }

char16_t* shrink_text(char16_t* storage, std::size_t length) noexcept {
  auto text = reinterpret_cast<BSTR>(storage);
  if (!SysReAllocStringLen(&text, text, static_cast<UINT>(length))) return nullptr;
  return reinterpret_cast<char16_t*>(text);
}

}  // namespace corvelle
