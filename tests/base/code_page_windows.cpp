#include <windows.h>

#include <array>

#include "tests/base/code_page.h"

namespace corvelle::testing {
namespace {

constexpr UINT kNumber = 936;

}  // namespace

CodePage::CodePage() = default;
CodePage::~CodePage() = default;

std::int16_t CodePage::code_of(char16_t character) const {
  const auto wide = static_cast<wchar_t>(character);
  std::array<char, 8> bytes{};
  const int count =
      WideCharToMultiByte(kNumber, 0, &wide, 1, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  const auto first = static_cast<std::uint8_t>(bytes[0]);
  const auto second = static_cast<std::uint8_t>(bytes[1]);
  return static_cast<std::int16_t>(count == 1 ? first : first << 8 | second);
}

std::u16string CodePage::decoded(std::int32_t code) const {
  const std::array<char, 2> bytes{static_cast<char>(code >> 8), static_cast<char>(code)};
  const int skipped = code <= 0xFF ? 1 : 0;
  std::array<wchar_t, 8> units{};
  const int count = MultiByteToWideChar(kNumber, 0, bytes.data() + skipped, 2 - skipped, units.data(),
                                        static_cast<int>(units.size()));
  return {units.begin(), units.begin() + count};
}

}  // namespace corvelle::testing
