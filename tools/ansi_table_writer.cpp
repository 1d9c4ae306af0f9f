// Writes base/ansi_code_table.h from this platform's own conversion to code page 936.
//   ansi_table_writer FILE          writes FILE
//   ansi_table_writer --check FILE  ends with 1 unless FILE is exactly what would be written
#include <windows.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr UINT kCodePage = 936;
constexpr unsigned kPageLength = 256;
constexpr unsigned kPageCount = 65536 / kPageLength;
constexpr unsigned kNumbersPerLine = 16;

using Page = std::array<std::uint16_t, kPageLength>;

constexpr std::string_view kHead =
    R"(// base/ansi_code_table.h - code page 936, character by character; written by tools/generate_ansi_table.
//
// What the platform's conversion to code page 936 gives for each of the 65,536 code units: one byte, or two as
// lead byte * 256 + trail byte; 003F where the code page lacks the character. Equal pages of 256 units are kept once,
// which halves the table: )";

// What the platform writes for `unit`: its byte, or its two bytes, the first one high.
std::uint16_t code_of(unsigned unit) {
  const auto character = static_cast<wchar_t>(unit);
  std::array<char, 8> bytes{};
  const int count =
      WideCharToMultiByte(kCodePage, 0, &character, 1, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  const auto first = static_cast<unsigned char>(bytes[0]);
  const auto second = static_cast<unsigned char>(bytes[1]);
  if (count == 1) return first;
  if (count == 2) return static_cast<std::uint16_t>(first << 8 | second);
  std::cerr << "code unit " << unit << " is converted to " << count << " bytes\n";
  std::exit(1);
}

std::string hexadecimal(unsigned number, int digits) {
  std::array<char, 16> text{};
  (void)std::snprintf(text.data(), text.size(), "0x%0*X", digits, number);
  return text.data();
}

template <class Numbers>
std::string rows(const Numbers& numbers, int digits) {
  std::string result;
  for (std::size_t at = 0; at < numbers.size(); ++at) {
    result += at % kNumbersPerLine == 0 ? "    " : " ";
    result += hexadecimal(numbers[at], digits) + ",";
    if (at % kNumbersPerLine == kNumbersPerLine - 1) result += "\n";
  }
  return result;
}

std::string table_file() {
  std::vector<Page> pages;
  std::map<Page, std::uint8_t> number_of_page;
  std::array<std::uint8_t, kPageCount> page_numbers{};
  for (unsigned high = 0; high < kPageCount; ++high) {
    Page page{};
    for (unsigned low = 0; low < kPageLength; ++low) page[low] = code_of(high * kPageLength + low);
    const auto [known, added] = number_of_page.try_emplace(page, static_cast<std::uint8_t>(pages.size()));
    if (added) pages.push_back(page);
    page_numbers[high] = known->second;
  }
  const std::string count = std::to_string(pages.size());
  const std::string size = std::to_string(pages.size() * sizeof(Page) + sizeof page_numbers);
  std::string file(kHead);
  file += count + " pages, " + size + " bytes.\n#pragma once\n\n#include <array>\n#include <cstdint>\n\n";
  file += "namespace corvelle::internal {\n\n// clang-format off\n";
  file += "// Which page holds the codes of the units with this high byte.\n";
  file += "inline constexpr std::array<std::uint8_t, 256> kAnsiPageNumbers = {\n" + rows(page_numbers, 2) + "};\n\n";
  file += "inline constexpr std::array<std::array<std::uint16_t, 256>, " + count + "> kAnsiPages = {{\n";
  for (const Page& page : pages) file += "  {\n" + rows(page, 4) + "  },\n";
  return file +
         "}};\n// clang-format on\n\n"
         "constexpr std::int16_t code_in_table(std::size_t character) {\n"
         "  return static_cast<std::int16_t>(kAnsiPages[kAnsiPageNumbers[character / 256]][character % 256]);\n"
         "}\n\n}  // namespace corvelle::internal\n";
}

std::string content_of(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::string_view(arguments[1]) == "--check") {
    if (content_of(arguments[2]) == table_file()) return 0;
    std::cerr << arguments[2] << " is not what this platform's conversion gives; run tools/generate_ansi_table\n";
    return 1;
  }
  if (count != 2) {
    std::cerr << "usage: ansi_table_writer [--check] FILE\n";
    return 2;
  }
  std::ofstream file(arguments[1], std::ios::binary);
  file << table_file();
  return file.flush() ? 0 : 1;
}
