// tests/console/files.h - whole files at wide paths.
#pragma once

#include <string>
#include <string_view>

namespace corvelle::testing {

// The file's bytes; none where it cannot be read.
std::string content_of(const std::wstring& path);

// Makes the file anew with these bytes.
void write(const std::wstring& path, std::string_view bytes);

}  // namespace corvelle::testing
