#include <windows.h>

#include <string>

#include "base/errors.h"
#include "data/file_find.h"
#include "data/path_windows.h"

namespace corvelle {
namespace {

constexpr std::size_t kLongestPath = 32767;

bool has_wildcard(std::wstring_view path) { return path.find_first_of(L"*?") != path.npos; }

// Where the last part of `path` begins.
std::size_t name_in(std::wstring_view path) { return path.find_last_of(L"\\/:") + 1; }

class DirectorySearch {
 public:
  DirectorySearch(const std::wstring& pattern, WIN32_FIND_DATAW& first)
      : handle_(FindFirstFileW(pattern.c_str(), &first)) {}
  ~DirectorySearch() {
    if (found()) FindClose(handle_);
  }
  DirectorySearch(const DirectorySearch&) = delete;
  DirectorySearch& operator=(const DirectorySearch&) = delete;

  bool found() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool next(WIN32_FIND_DATAW& entry) { return FindNextFileW(handle_, &entry) != FALSE; }

 private:
  HANDLE handle_;
};

// Keeps the system from asking for a disk in a message box, for this thread. Before Windows 7 there is only the mode of
// the whole process, which is put back as soon as the search is over.
class NoDiskRequests {
 public:
  NoDiskRequests() : set_mode_(thread_error_mode()) {
    if (set_mode_ != nullptr) {
      set_mode_(SEM_FAILCRITICALERRORS, &former_);
    } else {
      former_ = SetErrorMode(SEM_FAILCRITICALERRORS);
      SetErrorMode(former_ | SEM_FAILCRITICALERRORS);
    }
  }
  ~NoDiskRequests() {
    if (set_mode_ != nullptr) {
      set_mode_(former_, nullptr);
    } else {
      SetErrorMode(former_);
    }
  }
  NoDiskRequests(const NoDiskRequests&) = delete;
  NoDiskRequests& operator=(const NoDiskRequests&) = delete;

 private:
  using SetMode = BOOL(WINAPI*)(DWORD mode, DWORD* former);

  static SetMode thread_error_mode() {
    const FARPROC address = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetThreadErrorMode");
    return reinterpret_cast<SetMode>(reinterpret_cast<void*>(address));
  }

  SetMode set_mode_;
  DWORD former_ = 0;
};

std::u16string system_message(DWORD code) {
  wchar_t message[512];
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, message,
                                ARRAYSIZE(message), nullptr);
  while (length > 0 && message[length - 1] <= L' ') --length;
  if (length == 0) return u"system error " + decimal_text(static_cast<std::int64_t>(code));
  return {reinterpret_cast<const char16_t*>(message), length};
}

std::wstring full_path(const std::wstring& path) {
  std::wstring result(MAX_PATH, L'\0');
  DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(result.size()), result.data(), nullptr);
  if (length > result.size()) {
    result.resize(length);
    length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(result.size()), result.data(), nullptr);
  }
  result.resize(length);
  return result;
}

// `path` in a form in which the system takes it, however long it is. A name with wildcards is left out of what the
// system makes of it: its last point, which says that a name has none, would be lost.
std::wstring searchable(const std::wstring& path) {
  const std::size_t name = has_wildcard(path) ? name_in(path) : path.size();
  const std::wstring full = full_path(path.substr(0, name)) + path.substr(name);
  return full.size() < MAX_PATH ? path : long_path(full);
}

// Whether the system could take `path` for another one than is meant, or its wildcards for others than * and ?: it
// reads a path up to its first NUL, counts it in 16 bits, has three more wildcards, and looks for none in a folder.
bool is_malformed(const std::wstring& path) {
  const std::size_t beginning = path.starts_with(L"\\\\?\\") ? 4 : 0;
  const std::wstring_view folder = std::wstring_view(path).substr(beginning, name_in(path) - beginning);
  return path.size() > kLongestPath || path.find_first_of(std::wstring_view(L"\0<>\"", 4)) != path.npos ||
         has_wildcard(folder);
}

bool is_ordinary(const WIN32_FIND_DATAW& entry) {
  constexpr DWORD kVolumeLabel = 0x8;  // FAT's; the system's headers no longer name it
  return (entry.dwFileAttributes &
          (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY | kVolumeLabel)) == 0;
}

bool means_no_match(DWORD code) {
  return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_NO_MORE_FILES ||
         code == ERROR_DIRECTORY;  // a file stands where the path has a folder
}

[[noreturn]] void raise_system_error(std::u16string_view pattern, DWORD code) {
  raise_search_error(pattern, HRESULT_FROM_WIN32(code), system_message(code));
}

}  // namespace

bool finds_ordinary_file(std::u16string_view pattern) {
  const std::wstring given(pattern.begin(), pattern.end());
  if (is_malformed(given)) raise_system_error(pattern, ERROR_INVALID_NAME);
  if (given.empty() || names_a_device(given)) return false;
  const std::wstring path = searchable(given);
  if (path.size() > kLongestPath) raise_system_error(pattern, ERROR_INVALID_NAME);
  const NoDiskRequests quiet;
  WIN32_FIND_DATAW entry;
  DirectorySearch search(path, entry);
  if (search.found()) {
    do {
      if (is_ordinary(entry)) return true;
    } while (search.next(entry));
  }
  const DWORD code = GetLastError();
  if (!means_no_match(code)) raise_system_error(pattern, code);
  return false;
}

}  // namespace corvelle
