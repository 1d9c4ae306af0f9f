#include <algorithm>
#include <stdexcept>

#include "tests/contract/contract_text.h"
#include "tests/support/component_file.h"
#include "tests/support/registry_snapshot.h"

namespace corvelle::testing {
namespace {

void replace_all(std::wstring& text, const std::wstring& part, const std::wstring& by) {
  for (std::size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + by.size())) {
    text.replace(at, part.size(), by);
  }
}

std::string shown(std::vector<std::wstring> lines, const std::wstring& dll) {
  const std::wstring system = sizeof(void*) == 8 ? L"\\win64" : L"\\win32";
  std::string text;
  for (std::wstring& line : lines) {
    replace_all(line, dll, L"<dll>");
    replace_all(line, dll.substr(0, dll.rfind(L'\\')), L"<folder>");
    replace_all(line, system, L"\\<system>");
    text += utf8(line) + "\n";
  }
  return text;
}

void require(HRESULT result, const char* step) {
  if (FAILED(result)) throw std::runtime_error(std::string(step) + " failed: " + std::to_string(result));
}

}  // namespace

std::string registration_text(const std::wstring& dll) {
  const ComponentFile file(dll);
  const TemporaryClassesRoot root;
  require(file.register_server(), "DllRegisterServer");
  const std::string written = shown(root.snapshot(), dll);
  require(file.unregister_server(), "DllUnregisterServer");
  return written + "left after removal:\n" + shown(root.snapshot(), dll);
}

}  // namespace corvelle::testing
