// datenum/number_text.h - a number in an error's description.
#pragma once

#include "base/short_text.h"

namespace corvelle {

// `value` with the 15 digits that a double holds for certain.
//   number_text(2958466.5) is "2958466.5", number_text(1e20) is "1e+20"; "inf" and "nan" where it is no number
ShortText<32> number_text(double value) noexcept;

}  // namespace corvelle
