#include "text/ansi_code.h"

namespace corvelle {

std::int16_t ansi_code(char16_t character) {
  return static_cast<std::int16_t>(character < 0x80                             ? character
                                   : character >= 0x4E00 && character <= 0x9FA5 ? -10544
                                                                                : 63);
}

}  // namespace corvelle
