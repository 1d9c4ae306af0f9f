#include "text_files.h"

#include <windows.h>

#include <cstdio>
#include <cstring>

#include "component.h"

namespace {

[[noreturn]] void fail(const std::wstring& what) { throw CallFailed(HRESULT_FROM_WIN32(GetLastError()), what); }

std::string content_of(const std::wstring& path) {
  FILE* file = _wfopen(path.c_str(), L"rb");
  if (file == nullptr) fail(L"cannot read " + path);
  std::string content;
  char block[4096];
  for (size_t size = 0; (size = std::fread(block, 1, sizeof block, file)) > 0;) content.append(block, size);
  std::fclose(file);
  return content;
}

Lines lines_of(const std::wstring& text) {
  Lines lines;
  for (size_t begin = 0, end = 0; (end = text.find(L"\r\n", begin)) != std::wstring::npos; begin = end + 2) {
    lines.push_back(text.substr(begin, end - begin));
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

}  // namespace

Lines ansi_lines(const std::wstring& path) {
  const std::string content = content_of(path);
  std::wstring text(content.size(), L'\0');
  text.resize(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, content.data(), static_cast<int>(content.size()),
                                                      text.data(), static_cast<int>(text.size()))));
  return lines_of(text);
}

Lines unicode_lines(const std::wstring& path) {
  const std::string content = content_of(path);
  std::wstring text(content.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), content.data(), text.size() * sizeof(wchar_t));
  return lines_of(text.empty() ? text : text.substr(1));
}

void write_unicode(const std::wstring& path, const Lines& lines) {
  FILE* file = _wfopen(path.c_str(), L"wb");
  if (file == nullptr) fail(L"cannot write " + path);
  std::fwrite(L"\xFEFF", sizeof(wchar_t), 1, file);
  for (const std::wstring& line : lines) {
    std::fwrite(line.data(), sizeof(wchar_t), line.size(), file);
    std::fwrite(L"\r\n", sizeof(wchar_t), 2, file);
  }
  std::fclose(file);
}
