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

char16_t* allocate_text(std::size_t length) {
  // A BSTR counts its bytes in 32 bits, header and terminator included, and Wine adds to them unchecked before it
  // rounds.
  if (length > std::numeric_limits<UINT>::max() / sizeof(OLECHAR) - 32) throw std::bad_alloc();
  const BSTR storage = SysAllocStringLen(nullptr, static_cast<UINT>(length));
  if (storage == nullptr) throw std::bad_alloc();
  return reinterpret_cast<char16_t*>(storage);
}

char16_t* shrink_text(char16_t* storage, std::size_t length) {
  auto text = reinterpret_cast<BSTR>(storage);
  // Given its own content, the system cuts the text where it stands.
  if (!SysReAllocStringLen(&text, text, static_cast<UINT>(length))) throw std::bad_alloc();
  return reinterpret_cast<char16_t*>(text);
}

}  // namespace corvelle
