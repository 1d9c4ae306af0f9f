#include "data/path_windows.h"

#include <algorithm>
#include <iterator>

namespace corvelle {
namespace {

constexpr wchar_t upper(wchar_t unit) {
  return unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - (L'a' - L'A')) : unit;
}

bool is_separator(wchar_t unit) { return unit == L'\\' || unit == L'/'; }

// Whether the system keeps `name` for a device; a # stands for the number of a port.
bool is_reserved(std::wstring_view name) {
  constexpr std::wstring_view kDevices[] = {L"CON", L"PRN", L"AUX", L"NUL", L"COM#", L"LPT#", L"CONIN$", L"CONOUT$"};
  static constexpr std::wstring_view kPortNumbers = L"123456789¹²³";
  const auto matches = [](wchar_t unit, wchar_t pattern) {
    return pattern == L'#' ? kPortNumbers.find(unit) != std::wstring_view::npos : upper(unit) == pattern;
  };
  return std::any_of(std::begin(kDevices), std::end(kDevices), [&](std::wstring_view device) {
    return std::equal(name.begin(), name.end(), device.begin(), device.end(), matches);
  });
}

bool has_drive(std::wstring_view path) { return path.size() >= 2 && path[1] == L':'; }

// Whether `path` begins with \\.\, however its separators are written.
bool is_in_device_folder(std::wstring_view path) {
  return path.size() >= 4 && is_separator(path[0]) && is_separator(path[1]) && path[2] == L'.' && is_separator(path[3]);
}

}  // namespace

std::wstring long_path(std::wstring_view full_path) {
  std::wstring result;
  if (full_path.starts_with(L"\\\\?\\") || full_path.starts_with(L"\\\\.\\")) {
    result = full_path;
  } else if (full_path.starts_with(L"\\\\")) {
    result.append(L"\\\\?\\UNC").append(full_path.substr(1));
  } else {
    result.append(L"\\\\?\\").append(full_path);
  }
  return result;
}

bool names_a_device(std::wstring_view path) {
  if (path.starts_with(L"\\\\?\\")) return false;
  if (is_in_device_folder(path) && !has_drive(path.substr(4))) return true;
  std::wstring_view name = path.substr(path.find_last_of(L"\\/") + 1);
  if (has_drive(name)) name.remove_prefix(2);
  name = name.substr(0, name.find_first_of(L".:"));
  return is_reserved(name.substr(0, name.find_last_not_of(L' ') + 1));
}

}  // namespace corvelle
