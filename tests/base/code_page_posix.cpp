#include <iconv.h>

#include <array>
#include <stdexcept>
#include <string_view>

#include "tests/base/code_page.h"

namespace corvelle::testing {
namespace {

iconv_t opened(const char* to, const char* from) {
  iconv_t conversion = iconv_open(to, from);
  // NOLINTNEXTLINE(performance-no-int-to-ptr): how iconv_open says no
  if (conversion == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("iconv has no such conversion");
  return conversion;
}

// `input` converted, empty where it cannot be.
std::string converted(iconv_t conversion, std::string input) {
  std::array<char, 16> output{};
  char* from = input.data();
  char* to = output.data();
  std::size_t from_left = input.size();
  std::size_t to_left = output.size();
  iconv(conversion, nullptr, nullptr, nullptr, nullptr);
  if (iconv(conversion, &from, &from_left, &to, &to_left) == static_cast<std::size_t>(-1)) return {};
  return {output.data(), to};
}

}  // namespace

CodePage::CodePage() : to_bytes_(opened("GBK", "UTF-16LE")), to_units_(opened("UTF-16LE", "GBK")) {}

CodePage::~CodePage() {
  iconv_close(to_bytes_);
  iconv_close(to_units_);
}

std::int16_t CodePage::code_of(char16_t character) const {
  const std::string bytes =
      converted(to_bytes_, {static_cast<char>(character & 0xFF), static_cast<char>(character >> 8)});
  if (bytes.empty()) return u'?';
  const auto first = static_cast<std::uint8_t>(bytes[0]);
  if (bytes.size() == 1) return first;
  return static_cast<std::int16_t>(first << 8 | static_cast<std::uint8_t>(bytes[1]));
}

std::u16string CodePage::decoded(std::int32_t code) const {
  const std::string bytes{static_cast<char>(code >> 8), static_cast<char>(code)};
  std::u16string result;
  for (const char byte : std::string_view(bytes).substr(code <= 0xFF ? 1 : 0)) {
    const std::string unit = converted(to_units_, {byte});
    result += unit.empty()
                  ? u'?'
                  : static_cast<char16_t>(static_cast<std::uint8_t>(unit[0]) | static_cast<std::uint8_t>(unit[1]) << 8);
  }
  return result;
}

}  // namespace corvelle::testing
