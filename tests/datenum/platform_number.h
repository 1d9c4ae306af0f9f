// tests/datenum/platform_number.h - the platform's own reading and formatting of number texts.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvelle::testing {

struct BstrDeleter {
  void operator()(BSTR text) const { SysFreeString(text); }
};
using OwnedBstr = std::unique_ptr<OLECHAR, BstrDeleter>;

inline OwnedBstr bstr_of(std::u16string_view text) {
  return OwnedBstr(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size())));
}

// What the platform's conversion reads; nothing where it refuses.
inline std::optional<double> platform_number(std::u16string_view text) {
  double value = 0;
  const HRESULT result = VarR8FromStr(bstr_of(text).get(), LOCALE_USER_DEFAULT, 0, &value);
  return SUCCEEDED(result) ? std::optional(value) : std::nullopt;
}

// `text` as the platform formats it with seven "#", a "0" and `places` decimal places. For numbers below 1e200 only:
// Wine 8 overruns its buffer somewhere beyond.
inline std::u16string platform_format(std::u16string_view text, int places) {
  std::wstring pattern = L"#######0.";
  pattern.append(static_cast<std::size_t>(places), L'0');
  const OwnedBstr owned = bstr_of(text);
  VARIANT value;
  value.vt = VT_BSTR;
  value.bstrVal = owned.get();
  BSTR result = nullptr;
  if (FAILED(VarFormat(&value, pattern.data(), 1, 1, 0, &result))) throw std::runtime_error("VarFormat failed");
  const OwnedBstr formatted(result);
  return {reinterpret_cast<const char16_t*>(result), SysStringLen(result)};
}

}  // namespace corvelle::testing
