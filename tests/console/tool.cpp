#include "tests/console/tool.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

#include "tests/support/child_process.h"

namespace corvelle::testing {
namespace {

// Quoted so that the system's own parser gives `argument` back.
std::wstring quoted(const std::wstring& argument) {
  std::wstring result = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') result.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    result += unit;
  }
  return result.append(backslashes, L'\\') + L"\"";
}

// A temporary file that a process started from here can write to.
class CapturedStream {
 public:
  explicit CapturedStream(const wchar_t* name) {
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    path_ = std::wstring(folder) + name + std::to_wstring(GetCurrentProcessId());
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    handle_ = CreateFileW(path_.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                          CREATE_ALWAYS, 0, nullptr);
  }
  ~CapturedStream() {
    CloseHandle(handle_);
    DeleteFileW(path_.c_str());
  }
  CapturedStream(const CapturedStream&) = delete;
  CapturedStream& operator=(const CapturedStream&) = delete;

  HANDLE handle() const { return handle_; }
  std::string content() const {
    std::string bytes(GetFileSize(handle_, nullptr), '\0');
    DWORD read = 0;
    SetFilePointer(handle_, 0, nullptr, FILE_BEGIN);
    ReadFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    bytes.erase(std::remove(bytes.begin(), bytes.end(), '\r'), bytes.end());
    return bytes;
  }

 private:
  std::wstring path_;
  HANDLE handle_ = nullptr;
};

DWORD run_with(const std::wstring& tool, const std::vector<std::wstring>& arguments, HANDLE out, HANDLE error) {
  std::wstring command = quoted(tool);
  for (const std::wstring& argument : arguments) command += L" " + quoted(argument);
  STARTUPINFOW startup = {};
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = out;
  startup.hStdError = error;
  return run_program(tool, std::move(command), startup);
}

}  // namespace

std::wstring built_tool() { return full_path(CORVELLE_TOOL); }

ToolRun run_tool(const std::vector<std::wstring>& arguments, const std::wstring& tool) {
  const CapturedStream out(L"out");
  const CapturedStream error(L"error");
  ToolRun result;
  result.status = run_with(tool, arguments, out.handle(), error.handle());
  result.out = out.content();
  result.error = error.content();
  return result;
}

}  // namespace corvelle::testing
