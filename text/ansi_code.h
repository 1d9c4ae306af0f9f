// text/ansi_code.h - the code of a character in code page 936.
#pragma once

#include <cstdint>

namespace corvelle {

// The ANSI character code of `character`: 0 to 255 where code page 936 writes it as one byte; lead byte * 256 + trail
// byte taken as signed, and so negative, where it writes two. A character that the code page lacks, a lone surrogate
// among them, has the code of '?', 63.
//   ansi_code(u'a') == 97, ansi_code(u'中') == -10544, ansi_code(u'€') == 128
std::int16_t ansi_code(char16_t character);

// Whether `character` takes two display columns: its ANSI character code is negative.
inline bool is_double_byte(char16_t character) { return ansi_code(character) < 0; }

}  // namespace corvelle
