// component/automation.h - automation's texts, variants and objects as values.
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "base/usual_floating_point.h"
#include "base/wide_windows.h"

namespace corvelle {

// The text of a BSTR, which stays its owner's; a null BSTR is the empty text.
inline std::u16string_view text_of(BSTR text) { return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)}; }

// `text`, which has not failed, as a BSTR that belongs to the caller; null where there is no memory for an empty one.
inline BSTR bstr_of(Text&& text) {
  char16_t* storage = text.release();
  return storage != nullptr ? reinterpret_cast<BSTR>(storage) : SysAllocStringLen(nullptr, 0);
}

// Owns a BSTR.
class ScopedBstr {
 public:
  ScopedBstr() = default;
  // A copy of `content`; null where there is no memory for it.
  explicit ScopedBstr(std::u16string_view content)
      : text_(SysAllocStringLen(as_wide(content.data()), static_cast<UINT>(content.size()))) {}
  ~ScopedBstr() { SysFreeString(text_); }
  ScopedBstr(const ScopedBstr&) = delete;
  ScopedBstr& operator=(const ScopedBstr&) = delete;
  ScopedBstr(ScopedBstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  ScopedBstr& operator=(ScopedBstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }

  BSTR get() const { return text_; }
  bool is_null() const { return text_ == nullptr; }
  BSTR* receive() { return &text_; }  // for an out parameter, while nothing is owned
  void forget() { text_ = nullptr; }  // what a call that failed left there
  std::u16string_view view() const { return text_of(text_); }

 private:
  BSTR text_ = nullptr;
};

// Whether `type`, with or without VT_BYREF or VT_ARRAY, is one that a value of automation can have. Of a record
// (VT_RECORD) nothing is ever wanted, and whoever handles one runs the code of whoever described it.
constexpr bool is_automation_type(VARTYPE type) {
  const int element = type & ~(VT_BYREF | VT_ARRAY);
  return element <= VT_UINT && element != VT_DECIMAL + 1;
}

// What `value` leads to through VARIANTs by reference; null where it leads nowhere, or on and on.
inline VARIANT* followed(VARIANT* value) {
  constexpr int kMostReferences = 4;
  for (int i = 0; i < kMostReferences && value != nullptr; ++i) {
    const VARTYPE type = V_VT(value);
    if ((type & VT_BYREF) != 0 && V_BYREF(value) == nullptr) return nullptr;
    if (type != (VT_BYREF | VT_VARIANT)) return value;
    value = V_VARIANTREF(value);
  }
  return nullptr;
}

// VariantChangeTypeEx, whatever floating-point arithmetic the host has set. Only an object is asked for its default
// property with that: the code is the host's own. Whole numbers take no such arithmetic, and are what short calls
// convert.
inline HRESULT change_type(VARIANT* result, VARIANT* value, LCID locale, VARTYPE type) {
  const auto is_whole = [](VARTYPE each) { return each == VT_I2 || each == VT_I4 || each == VT_BOOL; };
  const int given = V_VT(value) & ~VT_BYREF;
  std::optional<UsualFloatingPoint> usual;
  if (given != VT_DISPATCH && given != VT_UNKNOWN && !(is_whole(V_VT(value)) && is_whole(type))) usual.emplace();
  return VariantChangeTypeEx(result, value, locale, 0, type);
}

// Owns what a VARIANT holds. Hosts write into it, and some write a type alone, or one that no value has: it is nothing
// but zeros to begin with, and only what a value can own is given back.
class ScopedVariant {
 public:
  ScopedVariant() { forget(); }
  ~ScopedVariant() { release(); }
  ScopedVariant(const ScopedVariant&) = delete;
  ScopedVariant& operator=(const ScopedVariant&) = delete;
  ScopedVariant(ScopedVariant&& other) noexcept : variant_(other.variant_) { V_VT(&other.variant_) = VT_EMPTY; }

  VARIANT& get() { return variant_; }
  const VARIANT& get() const { return variant_; }
  VARIANT* receive() { return &variant_; }

  // Empties it; with `forget`, what it held is not given back: what comes with a failure is nobody's.
  void clear() {
    release();
    forget();
  }
  void forget() { std::memset(&variant_, 0, sizeof(variant_)); }

 private:
  void release() {
    const VARTYPE type = V_VT(&variant_);
    const bool owns = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN || (type & VT_ARRAY) != 0;
    if (owns && (type & VT_BYREF) == 0) VariantClear(&variant_);
  }

  VARIANT variant_;
};

// `object` through its interface `interface_id`; null where it does not provide that, whatever it says or writes.
template <class Interface = IUnknown>
Microsoft::WRL::ComPtr<Interface> provided_by(IUnknown& object, REFIID interface_id = __uuidof(Interface)) {
  Interface* provided = nullptr;
  const HRESULT result = object.QueryInterface(interface_id, reinterpret_cast<void**>(&provided));
  Microsoft::WRL::ComPtr<Interface> owned;
  // Not by Attach, which adds a reference of its own in mingw-w64's header.
  if (SUCCEEDED(result)) *owned.GetAddressOf() = provided;
  return owned;
}

}  // namespace corvelle
