// component/automation.h - automation's texts and variants as values.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <new>
#include <string_view>
#include <utility>

#include "base/text.h"

namespace corvelle {

// The text of a BSTR, which stays its owner's; a null BSTR is the empty text.
inline std::u16string_view text_of(BSTR text) { return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)}; }

// `text` as a BSTR that belongs to the caller, never null. Throws std::bad_alloc.
inline BSTR bstr_of(Text&& text) {
  if (char16_t* storage = text.release(); storage != nullptr) return reinterpret_cast<BSTR>(storage);
  const BSTR empty = SysAllocStringLen(nullptr, 0);
  if (empty == nullptr) throw std::bad_alloc();
  return empty;
}

inline const OLECHAR* as_olechar(const char16_t* text) { return reinterpret_cast<const OLECHAR*>(text); }
inline std::u16string_view as_text(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }

// Owns a BSTR.
class ScopedBstr {
 public:
  ScopedBstr() = default;
  // A copy of `content`. Throws std::bad_alloc.
  explicit ScopedBstr(std::u16string_view content)
      : text_(SysAllocStringLen(as_olechar(content.data()), static_cast<UINT>(content.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
  }
  ~ScopedBstr() { SysFreeString(text_); }
  ScopedBstr(const ScopedBstr&) = delete;
  ScopedBstr& operator=(const ScopedBstr&) = delete;
  ScopedBstr(ScopedBstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  ScopedBstr& operator=(ScopedBstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }

  BSTR get() const { return text_; }
  BSTR* receive() { return &text_; }  // for an out parameter, while nothing is owned
  std::u16string_view view() const { return text_of(text_); }

 private:
  BSTR text_ = nullptr;
};

// Owns what a VARIANT holds. One that stays empty costs no call of the system.
class ScopedVariant {
 public:
  ScopedVariant() { V_VT(&variant_) = VT_EMPTY; }
  ~ScopedVariant() {
    if (V_VT(&variant_) != VT_EMPTY) VariantClear(&variant_);
  }
  ScopedVariant(const ScopedVariant&) = delete;
  ScopedVariant& operator=(const ScopedVariant&) = delete;
  ScopedVariant(ScopedVariant&& other) noexcept : variant_(other.variant_) { V_VT(&other.variant_) = VT_EMPTY; }

  VARIANT& get() { return variant_; }
  const VARIANT& get() const { return variant_; }
  VARIANT* receive() { return &variant_; }

 private:
  VARIANT variant_;
};

}  // namespace corvelle
