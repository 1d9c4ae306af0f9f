#include <clocale>
#include <cwctype>

#include "base/upper_case.h"

namespace corvelle {
namespace {

// Whatever locale the program runs in, letters beyond ASCII are mapped as Unicode maps them.
const locale_t kUnicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);

}  // namespace

char16_t upper_case(char16_t character) {
  const std::wint_t upper = towupper_l(character, kUnicode);
  return upper <= 0xFFFF ? static_cast<char16_t>(upper) : character;
}

}  // namespace corvelle
