// tests/reference/code_page.h - code page 936 from a printed chart; shares nothing with the product's table.
#pragma once

#include <cstdint>
#include <string>

namespace corvelle::reference {

// The ANSI character code of `character`: 0 to 255 for one byte, negative for two, 63 for what the code page lacks.
std::int16_t ansi_code(char16_t character);

// The characters that `code`, 0 to 32,767, stands for: its one byte up to 255, else its two bytes.
std::u16string decoded(std::int32_t code);

// `character` upper-cased as far as an operation can tell: only where the ANSI character code of the upper-case form is
// a letter's or a digit's. The dotless i and the long s stay, as on the platform.
char16_t upper_case(char16_t character);

}  // namespace corvelle::reference
