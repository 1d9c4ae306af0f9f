// tools/generated_text.h - what the generators of texts share. They run on the machine that builds.
#pragma once

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

namespace corvelle {

// Names and help texts of classes are plain ASCII, without characters that XML reserves.
inline std::string narrow(std::u16string_view ascii) { return {ascii.begin(), ascii.end()}; }
inline std::string narrow(const wchar_t* ascii) { return narrow(reinterpret_cast<const char16_t*>(ascii)); }

// `number` by the printf format `format`.
inline std::string hexadecimal(const char* format, unsigned number) {
  char digits[16];
  std::snprintf(digits, sizeof digits, format, number);
  return digits;
}

// "FF5764D4-C40E-4A4E-9BC0-7FEC6D6F4AA2"
inline std::string in_registry_form(const GUID& id) {
  std::string text =
      hexadecimal("%08X", id.Data1) + "-" + hexadecimal("%04X", id.Data2) + "-" + hexadecimal("%04X", id.Data3) + "-";
  for (std::size_t i = 0; i < 8; ++i) text += (i == 2 ? "-" : "") + hexadecimal("%02X", id.Data4[i]);
  return text;
}

// Writes the whole of the file at `path`. Whether all of it could be written.
inline bool write(const std::string& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary);
  file << content;
  return file.flush().good();
}

}  // namespace corvelle
