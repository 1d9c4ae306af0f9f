// data/computer_name.h - what the computer is called.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// The computer's name: on Windows its NetBIOS name, elsewhere its host name up to the first dot. Empty where the
// system does not tell. Raises nothing of its own.
//   GetComputerNm() == u"OFFICE-PC"
Result<Text> GetComputerNm();

// The name in a buffer that the system filled: the first `size` characters of `buffer` (all of it where it has fewer),
// without the NULs among them.
// Kept: `size` counts bytes, so for a name with double-byte characters it reaches beyond the name's end, into NULs.
//   computer_name_in(u"中文\0\0\0\0"sv, 4) == u"中文"
Result<Text> computer_name_in(std::u16string_view buffer, std::uint32_t size);

}  // namespace corvelle
