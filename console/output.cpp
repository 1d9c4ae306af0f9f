#include "console/output.h"

#include <algorithm>
#include <string>

#include "console/texts.h"

namespace corvelle::console {
namespace {

constexpr std::size_t kConsoleChunk = 8192;  // a console takes no text of 64 KiB at once

std::wstring with_system_line_ends(std::wstring_view text) {
  std::wstring result;
  for (const wchar_t unit : text) {
    if (unit == L'\n') result += L'\r';
    result += unit;
  }
  return result;
}

}  // namespace

void Output::print(std::wstring_view text) const {
  const std::wstring lines = with_system_line_ends(text);
  DWORD mode = 0;
  DWORD written = 0;
  if (GetConsoleMode(handle_, &mode) == FALSE) {
    const std::string bytes = utf8(lines);
    WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    return;
  }
  for (std::size_t from = 0; from < lines.size(); from += kConsoleChunk) {
    const std::size_t length = std::min(kConsoleChunk, lines.size() - from);
    WriteConsoleW(handle_, lines.data() + from, static_cast<DWORD>(length), &written, nullptr);
  }
}

void Output::print_line(std::wstring_view text) const { print(std::wstring(text) + L"\n"); }

}  // namespace corvelle::console
