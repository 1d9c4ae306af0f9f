#include <windows.h>

#include <bit>
#include <cstdint>
#include <cstdio>

#include "base/usual_floating_point.h"
#include "base/wide_windows.h"
#include "datenum/number_text.h"

namespace corvelle {

// By the system's own conversion: the compiler's would make up a tenth of the DLL. That one does not agree with others
// on what is no number, and writes exponents with a zero in front.
ShortText<32> number_text(double value) noexcept {
  ShortText<32> text;
  const auto bits = std::bit_cast<std::uint64_t>(value);
  if ((bits >> 52 & 0x7FF) == 0x7FF) {
    return text.append(bits >> 63 != 0 ? u"-" : u"").append((bits & 0xFFFFFFFFFFFFF) == 0 ? u"inf" : u"nan");
  }
  const UsualFloatingPoint usual;
  wchar_t digits[32];
  const int length = _snwprintf(digits, 32, L"%.15g", value);
  std::u16string_view rest = as_text({digits, static_cast<std::size_t>(length)});
  const std::size_t exponent = rest.find_first_of(u"+-", 1);
  if (exponent == std::u16string_view::npos) return text.append(rest);
  text.append({rest.data(), exponent + 1});
  rest.remove_prefix(exponent + 1);
  if (rest.size() == 3 && rest.starts_with(u'0')) rest.remove_prefix(1);
  return text.append(rest);
}

}  // namespace corvelle
