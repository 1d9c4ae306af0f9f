#include <windows.h>

#include "data/computer_name.h"

namespace corvelle {

Result<Text> GetComputerNm() {
  constexpr DWORD kBufferSize = 250;
  char buffer[kBufferSize] = {};
  DWORD size = kBufferSize;
  // Kept: the answer is not examined; a call that fails leaves the NULs, and so an empty name.
  GetComputerNameA(buffer, &size);
  char16_t wide[kBufferSize];
  const int length = MultiByteToWideChar(CP_ACP, 0, buffer, static_cast<int>(kBufferSize),
                                         reinterpret_cast<wchar_t*>(wide), static_cast<int>(kBufferSize));
  return computer_name_in({wide, static_cast<std::size_t>(length)}, size);
}

}  // namespace corvelle
