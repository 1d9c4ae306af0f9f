#include <clocale>
#include <cwctype>

#include "base/upper_case.h"

namespace corvelle {

char16_t upper_case(char16_t character) {
  // Whatever locale the program runs in, letters beyond ASCII are mapped as Unicode maps them.
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  const std::wint_t upper = towupper_l(character, unicode);
  return upper <= 0xFFFF ? static_cast<char16_t>(upper) : character;
}

}  // namespace corvelle
