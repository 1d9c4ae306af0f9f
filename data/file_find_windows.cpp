#include <windows.h>

#include "base/errors.h"
#include "base/slice.h"
#include "base/wide_windows.h"
#include "data/file_find.h"
#include "data/path_windows.h"

namespace corvelle {
namespace {

constexpr std::size_t kLongestPath = 32767;

bool has_wildcard(std::u16string_view path) { return path.find_first_of(u"*?") != path.npos; }

// Where the last part of `path` begins.
std::size_t name_in(std::u16string_view path) { return path.find_last_of(u"\\/:") + 1; }

class DirectorySearch {
 public:
  DirectorySearch(const Text& pattern, WIN32_FIND_DATAW& first) : handle_(FindFirstFileW(as_wide(pattern), &first)) {}
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

Error system_error(std::u16string_view pattern, DWORD code) {
  wchar_t message[512];
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, message,
                                ARRAYSIZE(message), nullptr);
  while (length > 0 && message[length - 1] <= L' ') --length;
  ShortText<40> wordless;
  wordless.append(u"system error ").append(decimal_text(static_cast<std::int64_t>(code)));
  return search_error(pattern, HRESULT_FROM_WIN32(code),
                      length > 0 ? as_text({message, length}) : std::u16string_view(wordless));
}

// Where the system takes `path` to lead. Failed where there is no memory for that.
Text full_path(const Text& path) {
  Text result = Text::of_length(MAX_PATH);
  while (!result.failed()) {
    const DWORD room = static_cast<DWORD>(result.size()) + 1;
    const DWORD length = GetFullPathNameW(as_wide(path), room, as_wide(result.data()), nullptr);
    if (length < room) {
      result.keep_first(length);
      return result;
    }
    result = Text::of_length(length);  // with the NUL
  }
  return result;
}

// `path` in a form in which the system takes it, however long it is. A name with wildcards is left out of what the
// system makes of it: its last point, which says that a name has none, would be lost.
Text searchable(std::u16string_view path) {
  const std::size_t name = has_wildcard(path) ? name_in(path) : path.size();
  Text folder(first_of(path, name));
  if (!folder.failed()) folder = full_path(folder);
  if (folder.failed()) return folder;
  Text full = joined({{folder, behind(path, name)}});
  if (full.failed()) return full;
  return full.size() < MAX_PATH ? Text(path) : long_path(full);
}

// Whether the system could take `path` for another one than is meant, or its wildcards for others than * and ?: it
// reads a path up to its first NUL, counts it in 16 bits, has three more wildcards, and looks for none in a folder.
bool is_malformed(std::u16string_view path) {
  const std::size_t beginning = begins_with(path, u"\\\\?\\") ? 4 : 0;
  const std::u16string_view folder = behind(first_of(path, name_in(path)), beginning);
  return path.size() > kLongestPath || path.find_first_of(std::u16string_view(u"\0<>\"", 4)) != path.npos ||
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

}  // namespace

Result<bool> finds_ordinary_file(std::u16string_view pattern) {
  if (is_malformed(pattern)) return system_error(pattern, ERROR_INVALID_NAME);
  if (pattern.empty() || names_a_device(pattern)) return false;
  const Text path = searchable(pattern);
  if (path.failed()) return out_of_memory();
  if (path.size() > kLongestPath) return system_error(pattern, ERROR_INVALID_NAME);
  const NoDiskRequests quiet;
  WIN32_FIND_DATAW entry;
  DirectorySearch search(path, entry);
  if (search.found()) {
    do {
      if (is_ordinary(entry)) return true;
    } while (search.next(entry));
  }
  const DWORD code = GetLastError();
  if (!means_no_match(code)) return system_error(pattern, code);
  return false;
}

}  // namespace corvelle
