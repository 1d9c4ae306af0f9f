// text/display_width.h - how many display columns a text takes: two for a double-byte character of code page 936, one
// for any other, a lone surrogate and a character that the code page lacks among them.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// The width of `vStr` in columns.
//   sumByte_Pf(u"中a") == 3.0
// Raises overflow (6) at 32,767 characters or more. Allocates nothing.
Result<double> sumByte_Pf(std::u16string_view vStr);

// The width of `vStr` in columns.
//   GetByte_Pf(u"中a", 0) == 3
// Kept: `vInt` is accepted and ignored; the interface was published with it.
// Raises overflow (6) at 32,767 characters or more, and where the width passes 32,767. Allocates nothing.
Result<std::int16_t> GetByte_Pf(std::u16string_view vStr, std::int16_t vInt);

// The width of `strCon` in columns as decimal digits, with neither sign nor padding.
//   Get_StrWidth(u"中a") == u"3", Get_StrWidth(u"") == u"0"
// Raises overflow (6) at 32,767 characters or more, and where the width passes 32,767. Allocates the result alone.
Result<Text> Get_StrWidth(std::u16string_view strCon);

}  // namespace corvelle
