#include "console/surroundings.h"

#include <windows.h>

#include "console/entry_point.h"

namespace corvelle::console {
namespace {

bool is_of_administrators() {
  BYTE administrators[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof(administrators);
  BOOL is_member = FALSE;
  return !CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, administrators, &size) ||
         !CheckTokenMembership(nullptr, administrators, &is_member) || is_member != FALSE;
}

}  // namespace

// An administrator's ordinary programs are not elevated since Windows Vista, before which there was no difference.
bool is_elevated() {
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return true;
  TOKEN_ELEVATION elevation = {};
  DWORD size = 0;
  const bool known = GetTokenInformation(token, TokenElevation, &elevation, sizeof(elevation), &size) != FALSE;
  CloseHandle(token);
  return known ? elevation.TokenIsElevated != 0 : is_of_administrators();
}

// Neither call is in every Windows XP, and the second needs Windows 8 or an update of 2011.
void take_modules_from_system_only() {
  const HMODULE system = GetModuleHandleW(L"kernel32.dll");
  using SetDllFolder = BOOL(WINAPI*)(LPCWSTR);
  if (const auto set = entry_point<SetDllFolder>(system, "SetDllDirectoryW"); set != nullptr) set(L"");
  constexpr DWORD kSystemFolder = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32
  using SetDefaultFolders = BOOL(WINAPI*)(DWORD);
  if (const auto set = entry_point<SetDefaultFolders>(system, "SetDefaultDllDirectories"); set != nullptr) {
    set(kSystemFolder);
  }
}

}  // namespace corvelle::console
