#include <windows.h>

#include <oleauto.h>

#include <limits>
#include <new>

#include "base/text.h"
#include "base/text_storage.h"

namespace corvelle {

void TextStorageDeleter::operator()(char16_t* storage) const noexcept {
  SysFreeString(reinterpret_cast<BSTR>(storage));
}

namespace {

// A BSTR counts its bytes in 32 bits, header and terminator included, and what the system rounds that up to must fit,
// too.
UINT bstr_length(std::size_t length) {
  if (length > std::numeric_limits<UINT>::max() / sizeof(OLECHAR) - 32) throw std::bad_alloc();
  return static_cast<UINT>(length);
}

char16_t* checked(BSTR storage) {
  if (storage == nullptr) throw std::bad_alloc();
  return reinterpret_cast<char16_t*>(storage);
}

}  // namespace

char16_t* allocate_text(std::size_t length) { return checked(SysAllocStringLen(nullptr, bstr_length(length))); }

char16_t* copy_text(std::u16string_view content) {
  return checked(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(content.data()), bstr_length(content.size())));
}

char16_t* shrink_text(char16_t* storage, std::size_t length) {
  auto text = reinterpret_cast<BSTR>(storage);
  if (!SysReAllocStringLen(&text, text, static_cast<UINT>(length))) throw std::bad_alloc();
  return reinterpret_cast<char16_t*>(text);
}

}  // namespace corvelle
