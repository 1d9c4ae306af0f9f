#include "data/path_windows.h"

#include <algorithm>
#include <iterator>

#include "base/slice.h"

namespace corvelle {
namespace {

constexpr char16_t upper(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
}

bool is_separator(char16_t unit) { return unit == u'\\' || unit == u'/'; }

// Whether the system keeps `name` for a device; a # stands for the number of a port.
bool is_reserved(std::u16string_view name) {
  constexpr std::u16string_view kDevices[] = {u"CON", u"PRN", u"AUX", u"NUL", u"COM#", u"LPT#", u"CONIN$", u"CONOUT$"};
  static constexpr std::u16string_view kPortNumbers = u"123456789¹²³";
  const auto matches = [](char16_t unit, char16_t pattern) {
    return pattern == u'#' ? kPortNumbers.find(unit) != std::u16string_view::npos : upper(unit) == pattern;
  };
  return std::any_of(std::begin(kDevices), std::end(kDevices), [&](std::u16string_view device) {
    return std::equal(name.begin(), name.end(), device.begin(), device.end(), matches);
  });
}

bool has_drive(std::u16string_view path) { return path.size() >= 2 && path[1] == u':'; }

// Whether `path` begins with \\.\, however its separators are written.
bool is_in_device_folder(std::u16string_view path) {
  return path.size() >= 4 && is_separator(path[0]) && is_separator(path[1]) && path[2] == u'.' && is_separator(path[3]);
}

}  // namespace

Text long_path(std::u16string_view full_path) {
  if (begins_with(full_path, u"\\\\?\\") || begins_with(full_path, u"\\\\.\\")) return Text(full_path);
  if (begins_with(full_path, u"\\\\")) return joined({{u"\\\\?\\UNC", behind(full_path, 1)}});
  return joined({{u"\\\\?\\", full_path}});
}

bool names_a_device(std::u16string_view path) {
  if (begins_with(path, u"\\\\?\\")) return false;
  if (is_in_device_folder(path) && !has_drive(behind(path, 4))) return true;
  std::u16string_view name = behind(path, path.find_last_of(u"\\/") + 1);
  if (has_drive(name)) name.remove_prefix(2);
  name = first_of(name, name.find_first_of(u".:"));
  return is_reserved(first_of(name, name.find_last_not_of(u' ') + 1));
}

}  // namespace corvelle
