#include "console/texts.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace corvelle::console {

std::string utf8(std::wstring_view text) {
  const auto length = static_cast<int>(text.size());
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), bytes, nullptr, nullptr);
  return result;
}

std::wstring wide(std::string_view text) {
  const auto length = static_cast<int>(text.size());
  const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), units);
  return result;
}

bool same_name(std::wstring_view left, std::wstring_view right) {
  return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, left.data(), static_cast<int>(left.size()), right.data(),
                        static_cast<int>(right.size())) == CSTR_EQUAL;
}

std::wstring on_one_line(std::wstring text) {
  const auto controls = [](wchar_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); };
  std::replace_if(text.begin(), text.end(), controls, L'\xFFFD');
  return text;
}

std::wstring hexadecimal(HRESULT result) {
  wchar_t digits[11] = {};
  std::swprintf(digits, std::size(digits), L"0x%08lX", static_cast<unsigned long>(result));
  return digits;
}

std::wstring system_text(HRESULT result) {
  wchar_t text[512] = {};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      static_cast<DWORD>(result), 0, text, std::size(text), nullptr);
  std::wstring found(text, length);
  while (!found.empty() && (found.back() == L'\n' || found.back() == L'\r' || found.back() == L' ')) found.pop_back();
  return found;
}

std::wstring explained(HRESULT result) {
  const std::wstring text = system_text(result);
  return text.empty() ? hexadecimal(result) : hexadecimal(result) + L": " + text;
}

}  // namespace corvelle::console
