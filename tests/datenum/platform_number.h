// tests/datenum/platform_number.h - the platform's own reading and formatting of number texts.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/datenum/locale_symbols.h"

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

// What read_number reads, as the nearest double.
inline std::optional<double> own_number(std::u16string_view text, const NumberSymbols& symbols) {
  DecimalNumber number;
  if (!read_number(text, symbols, number)) return std::nullopt;
  std::string digits = number.negative ? "-0." : "0.";
  digits.append(number.digits, number.digits + number.count).append("e").append(std::to_string(number.point));
  return std::strtod(digits.c_str(), nullptr);
}

// The platform multiplies digits and powers of ten as doubles, so its last digits wobble.
inline bool is_close(double left, double right) {
  return std::signbit(left) == std::signbit(right) && std::abs(left - right) <= 1e-14 * std::abs(right) + 1e-300;
}

inline bool agree(std::optional<double> own, std::optional<double> platform) {
  if (own.has_value() != platform.has_value()) return false;
  return !own.has_value() || is_close(*own, *platform);
}

inline std::string shown(std::optional<double> number) { return number ? std::to_string(*number) : "no number"; }

// An exponent of ten digits may lie beyond 32 bits, where Wine 8 wraps around or crashes.
inline bool has_ten_digit_exponent(std::u16string_view text) {
  const auto mark = text.find_first_of(u"eE");
  if (mark == std::u16string_view::npos) return false;
  std::size_t digits = 0;
  for (const char16_t unit : text.substr(mark)) {
    digits = unit >= u'0' && unit <= u'9' ? digits + 1 : 0;
    if (digits > 9) return true;
  }
  return false;
}

}  // namespace corvelle::testing
