#include "console/own_tools.h"

#include "console/place.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

const wchar_t* folder_name(Bitness bitness) { return bitness == Bitness::k32 ? L"win32" : L"win64"; }

}  // namespace

// Beside a folder of another name, anybody may be able to make one of this name.
std::optional<std::wstring> own_tool(Bitness bitness) {
  const std::wstring own = own_path();
  if (bitness == kOwnBitness) return own;
  const std::wstring own_folder = folder_of(own);
  const std::wstring package = folder_of(own_folder.substr(0, own_folder.size() - 1));
  if (!same_name(own_folder, package + folder_name(kOwnBitness) + L"\\")) return {};
  return package + folder_name(bitness) + L"\\corvelle.exe";
}

std::optional<HRESULT> result_of_tool(const std::wstring& tool, const std::wstring& arguments) {
  constexpr DWORD kPatience = 30'000;  // milliseconds
  std::wstring command = L"\"" + tool + L"\" " + arguments;
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(tool.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder_of(tool).c_str(),
                      &startup, &process)) {
    return {};
  }
  DWORD status = static_cast<DWORD>(HRESULT_FROM_WIN32(WAIT_TIMEOUT));
  if (WaitForSingleObject(process.hProcess, kPatience) == WAIT_OBJECT_0) {
    GetExitCodeProcess(process.hProcess, &status);
  } else {
    TerminateProcess(process.hProcess, status);
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<HRESULT>(status);
}

}  // namespace corvelle::console
