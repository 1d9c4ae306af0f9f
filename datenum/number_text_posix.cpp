#include <algorithm>
#include <cstdio>

#include "base/usual_floating_point.h"
#include "datenum/number_text.h"

namespace corvelle {

ShortText<32> number_text(double value) noexcept {
  const UsualFloatingPoint usual;
  char digits[32];
  const int length = std::snprintf(digits, sizeof digits, "%.15g", value);
  char16_t wide[32];
  std::copy_n(digits, length, wide);
  return ShortText<32>().append({wide, static_cast<std::size_t>(length)});
}

}  // namespace corvelle
