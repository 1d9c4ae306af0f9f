#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include "base/errors.h"
#include "data/file_find.h"

namespace corvelle {
namespace {

[[noreturn]] void raise_system_error(std::u16string_view pattern, std::error_code error) {
  const std::string message = error.message();
  // There is no HRESULT for an errno; the facility for codes of one interface's own holds it.
  raise_search_error(pattern, static_cast<std::int32_t>(0x80040000u | static_cast<std::uint32_t>(error.value())),
                     std::u16string(message.begin(), message.end()));
}

bool means_no_match(std::error_code error) {
  return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

bool is_high_surrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool is_low_surrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

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
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

bool is_hidden(std::string_view name) { return name.substr(0, 1) == "."; }

bool finds_in_folder(std::u16string_view pattern, const std::filesystem::path& folder, std::string_view names) {
  std::error_code error;
  std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    std::error_code unknown;  // of a link that leads nowhere: no ordinary file
    if (matches(name, names) && !is_hidden(name) && entry->is_regular_file(unknown)) return true;
  }
  if (error && !means_no_match(error)) raise_system_error(pattern, error);
  return false;
}

}  // namespace

bool finds_ordinary_file(std::u16string_view pattern) {
  if (!fits_a_path(pattern)) raise_system_error(pattern, std::make_error_code(std::errc::illegal_byte_sequence));
  const std::filesystem::path path(pattern);
  const std::string name = path.filename().string();
  if (name.find_first_of("*?") != std::string::npos) return finds_in_folder(pattern, path.parent_path(), name);
  std::error_code error;
  const bool is_file = std::filesystem::is_regular_file(path, error);
  if (error && !means_no_match(error)) raise_system_error(pattern, error);
  return is_file && !is_hidden(name);
}

}  // namespace corvelle
