// console/registry_text.h - texts of the registry.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/wide_windows.h"
#include "component/registry.h"

namespace corvelle::console {

// The text of the value `name` at `key`; none where read_registry has none.
inline std::optional<std::wstring> registry_text(const ClassesRoot& root, std::wstring_view key,
                                                 const std::wstring& name = {}, REGSAM view = 0) {
  Text text;
  if (read_registry(root, key, name.c_str(), view, &text) != ERROR_SUCCESS) return std::nullopt;
  return as_wide(text);
}

}  // namespace corvelle::console
