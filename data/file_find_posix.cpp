#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "base/errors.h"
#include "base/short_text.h"
#include "base/utf8.h"
#include "data/file_find.h"

namespace corvelle {
namespace {

struct Free {
  void operator()(char* block) const { std::free(block); }
};
using OwnedPath = std::unique_ptr<char, Free>;

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

// strerror_r gives its text in one of two ways.
[[maybe_unused]] const char* message_of(const char* given, const char* /*buffer*/) { return given; }
[[maybe_unused]] const char* message_of(int /*status*/, const char* buffer) { return buffer; }

Error system_error(std::u16string_view pattern, int code) {
  if (code == ENOMEM) return out_of_memory();
  char buffer[128] = {};
  ShortText<128> message;
  for (const char letter : std::string_view(message_of(strerror_r(code, buffer, sizeof buffer), buffer))) {
    const auto unit = static_cast<char16_t>(static_cast<unsigned char>(letter));
    message.append({&unit, 1});
  }
  // There is no HRESULT for an errno; the facility for codes of one interface's own holds it.
  return search_error(pattern, static_cast<std::int32_t>(0x80040000u | static_cast<std::uint32_t>(code)), message);
}

bool means_no_match(int code) { return code == ENOENT || code == ENOTDIR; }

// Whether a path can hold every character of `pattern`: no NUL, no surrogate without its other half.
bool fits_a_path(std::u16string_view pattern) {
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (is_high_surrogate(pattern[i])) {
      if (++i == pattern.size() || !is_low_surrogate(pattern[i])) return false;
    } else if (pattern[i] == u'\0' || is_low_surrogate(pattern[i])) {
      return false;
    }
  }
  return true;
}

// `text`, which fits a path, in UTF-8; null where there is no memory.
OwnedPath utf8_path(std::u16string_view text) {
  constexpr std::size_t kMostBytes = 3;  // of one unit
  OwnedPath path(static_cast<char*>(std::malloc(kMostBytes * text.size() + 1)));
  char* end = path.get();
  if (end == nullptr) return path;
  for_each_utf8_byte(text, [&](char byte) { *end++ = byte; });
  *end = '\0';
  return path;
}

// Where the character at `i` of a UTF-8 text ends.
std::size_t behind_character(std::string_view text, std::size_t i) {
  do {
    ++i;
  } while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80);
  return i;
}

// Whether all of `name` is described by `pattern`, where * is any characters and ? is one.
bool matches(std::string_view name, std::string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t behind_star = std::string_view::npos;  // where to take up again, one character further on in `name`
  std::size_t star_end = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      behind_star = ++p;
      star_end = n;
    } else if (p < pattern.size() && pattern[p] == '?') {
      ++p;
      n = behind_character(name, n);
    } else if (p < pattern.size() && pattern[p] == name[n]) {
      ++p;
      ++n;
    } else if (behind_star != std::string_view::npos) {
      star_end = behind_character(name, star_end);
      n = star_end;
      p = behind_star;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

bool is_hidden(const char* name) { return name[0] == '.'; }

// A link counts as what it leads to; one that leads nowhere is no ordinary file.
bool is_ordinary(DIR* folder, const char* name) {
  struct stat status = {};
  return !is_hidden(name) && fstatat(dirfd(folder), name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

Result<bool> finds_in_folder(std::u16string_view pattern, const char* path, std::string_view names) {
  const OpenFolder folder(opendir(path));
  errno = folder != nullptr ? 0 : errno;
  while (const dirent* entry = folder != nullptr ? readdir(folder.get()) : nullptr) {
    if (matches(entry->d_name, names) && is_ordinary(folder.get(), entry->d_name)) return true;
    errno = 0;
  }
  if (errno != 0 && !means_no_match(errno)) return system_error(pattern, errno);
  return false;
}

Result<bool> is_ordinary_file(std::u16string_view pattern, const char* path, const char* name) {
  struct stat status = {};
  if (stat(path, &status) == 0) return S_ISREG(status.st_mode) && !is_hidden(name);
  if (!means_no_match(errno)) return system_error(pattern, errno);
  return false;
}

}  // namespace

Result<bool> finds_ordinary_file(std::u16string_view pattern) {
  if (!fits_a_path(pattern)) return system_error(pattern, EILSEQ);
  const OwnedPath path = utf8_path(pattern);
  if (path == nullptr) return out_of_memory();
  char* const slash = std::strrchr(path.get(), '/');
  const char* const name = slash != nullptr ? slash + 1 : path.get();
  if (std::strpbrk(name, "*?") == nullptr) return is_ordinary_file(pattern, path.get(), name);
  if (slash == nullptr) return finds_in_folder(pattern, ".", name);
  *slash = '\0';
  return finds_in_folder(pattern, slash == path.get() ? "/" : path.get(), name);
}

}  // namespace corvelle
