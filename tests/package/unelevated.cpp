// Runs a program without an administrator's rights, as user account control does, and ends with its exit code. Under
// Wine every process has these rights.
//   unelevated PROGRAM ARGUMENTS…

#include <windows.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace {

// What stands behind this program's name on its command line, quotes and all.
std::wstring given_command() {
  const std::wstring line = GetCommandLineW();
  const std::size_t end = line.starts_with(L'"') ? line.find(L'"', 1) + 1 : line.find(L' ');
  return line.substr(std::min(line.find_first_not_of(L' ', end), line.size()));
}

// This process's token, in which the group of administrators can only deny.
HANDLE limited_token() {
  BYTE administrators[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof(administrators);
  CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, administrators, &size);
  SID_AND_ATTRIBUTES disabled = {administrators, 0};
  HANDLE whole = nullptr;
  HANDLE limited = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &whole);
  CreateRestrictedToken(whole, DISABLE_MAX_PRIVILEGE, 1, &disabled, 0, nullptr, 0, nullptr, &limited);
  return limited;
}

}  // namespace

int main() {
  constexpr int kNotStarted = 99;
  std::wstring command = given_command();
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process = {};
  if (!CreateProcessAsUserW(limited_token(), nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                            &startup, &process)) {
    std::cerr << "cannot start it: " << GetLastError() << '\n';
    return kNotStarted;
  }
  DWORD status = kNotStarted;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &status);
  return static_cast<int>(status);
}
