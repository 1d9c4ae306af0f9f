// tests/support/child_process.h - the programs that a test starts.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace corvelle::testing {

// A path as the system knows it: this machine's paths come with slashes.
inline std::wstring full_path(const std::wstring& path) {
  std::wstring full(MAX_PATH, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), MAX_PATH, full.data(), nullptr));
  return full;
}

// Runs `program` with `command` as its whole command line, and ends it after a minute, since a message box would wait
// for ever. Its exit status; WAIT_TIMEOUT where it had to be ended. It inherits the handles that `startup` names, if
// any.
inline DWORD run_program(const std::wstring& program, std::wstring command, STARTUPINFOW startup = {}) {
  constexpr DWORD kPatience = 60'000;  // milliseconds
  startup.cb = sizeof(startup);
  const BOOL inherits = (startup.dwFlags & STARTF_USESTDHANDLES) != 0 ? TRUE : FALSE;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, inherits, 0, nullptr, nullptr, &startup,
                      &process)) {
    throw std::runtime_error("cannot start a program: " + std::to_string(GetLastError()));
  }
  DWORD status = WAIT_TIMEOUT;
  if (WaitForSingleObject(process.hProcess, kPatience) == WAIT_OBJECT_0) {
    GetExitCodeProcess(process.hProcess, &status);
  } else {
    TerminateProcess(process.hProcess, status);
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return status;
}

}  // namespace corvelle::testing
