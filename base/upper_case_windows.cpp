#include <windows.h>

#include "base/upper_case.h"

namespace corvelle {

char16_t upper_case(char16_t character) {
  auto unit = static_cast<WCHAR>(character);
  CharUpperBuffW(&unit, 1);
  return static_cast<char16_t>(unit);
}

}  // namespace corvelle
