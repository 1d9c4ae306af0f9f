// Automation's texts: a length in bytes, the units, a NUL.
#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

static_assert(sizeof(OLECHAR) == 2, "texts are compiled with -fshort-wchar");

namespace {

using Length = std::uint32_t;

Length* length_of(BSTR text) { return reinterpret_cast<Length*>(text) - 1; }

BSTR allocate(UINT bytes) {
  auto* block = static_cast<Length*>(std::malloc(sizeof(Length) + bytes + sizeof(OLECHAR)));
  if (block == nullptr) return nullptr;
  *block = bytes;
  auto* text = reinterpret_cast<BSTR>(block + 1);
  std::memset(reinterpret_cast<char*>(text) + bytes, 0, sizeof(OLECHAR));
  return text;
}

}  // namespace

BSTR SysAllocString(LPCOLESTR content) {
  if (content == nullptr) return nullptr;
  UINT length = 0;
  while (content[length] != 0) ++length;
  return SysAllocStringLen(content, length);
}

BSTR SysAllocStringLen(const OLECHAR* content, UINT length) {
  return SysAllocStringByteLen(reinterpret_cast<const char*>(content), length * static_cast<UINT>(sizeof(OLECHAR)));
}

BSTR SysAllocStringByteLen(const char* content, UINT bytes) {
  BSTR text = allocate(bytes);
  if (text != nullptr && content != nullptr) std::memcpy(text, content, bytes);
  return text;
}

INT SysReAllocStringLen(BSTR* text, const OLECHAR* content, UINT length) {
  BSTR moved = SysAllocStringLen(nullptr, length);
  if (moved == nullptr) return FALSE;
  if (content != nullptr) std::memcpy(moved, content, length * sizeof(OLECHAR));
  SysFreeString(*text);
  *text = moved;
  return TRUE;
}

void SysFreeString(BSTR text) {
  if (text != nullptr) std::free(length_of(text));
}

UINT SysStringByteLen(BSTR text) { return text == nullptr ? 0 : *length_of(text); }

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / static_cast<UINT>(sizeof(OLECHAR)); }
