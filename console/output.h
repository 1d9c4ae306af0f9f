// console/output.h - what the tool prints, right on a console and in a pipe or file.
#pragma once

#include <windows.h>

#include <string_view>

namespace corvelle::console {

// How the tool ends.
enum class ExitStatus { ok = 0, failed = 1, usage = 2, not_created = 3 };

// One of the two standard streams. A console gets UTF-16, whatever its code page; a pipe or a file gets UTF-8.
class Output {
 public:
  explicit Output(DWORD standard_handle) : handle_(GetStdHandle(standard_handle)) {}

  // Prints `text` with its line ends (\n) as the system writes them.
  void print(std::wstring_view text) const;
  void print_line(std::wstring_view text) const;

 private:
  HANDLE handle_;
};

// The answers go to `out`, what went wrong to `error`.
struct Streams {
  Output out = Output(STD_OUTPUT_HANDLE);
  Output error = Output(STD_ERROR_HANDLE);
};

}  // namespace corvelle::console
