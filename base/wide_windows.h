// base/wide_windows.h - texts as the system's functions take them: the same code units by another name.
#pragma once

#include <string_view>

#include "base/text.h"

namespace corvelle {

inline const wchar_t* as_wide(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
inline wchar_t* as_wide(char16_t* text) { return reinterpret_cast<wchar_t*>(text); }

// `text` with its NUL, whether it allocated or not.
inline const wchar_t* as_wide(const Text& text) { return text.empty() ? L"" : as_wide(text.data()); }

// Up to its NUL, which is not looked for among wide characters: natively, tests have the system's.
inline std::u16string_view as_text(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }
inline std::u16string_view as_text(std::wstring_view text) {
  return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}

}  // namespace corvelle
