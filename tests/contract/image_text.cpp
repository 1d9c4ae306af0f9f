#include <windows.h>

#include <winver.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "tests/contract/contract_text.h"
#include "tests/support/component_file.h"
#include "tests/support/loaded_image.h"

namespace corvelle::testing {
namespace {

std::vector<BYTE> version_resource(const std::wstring& dll) {
  std::vector<BYTE> resource(GetFileVersionInfoSizeW(dll.c_str(), nullptr));
  if (resource.empty() || !GetFileVersionInfoW(dll.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data())) {
    throw std::runtime_error("the DLL has no version resource");
  }
  return resource;
}

std::string number_shown(DWORD high, DWORD low) {
  std::ostringstream line;
  line << HIWORD(high) << '.' << LOWORD(high) << '.' << HIWORD(low) << '.' << LOWORD(low);
  return line.str();
}

// "(absent)" and an empty text differ: the mark of self-registration is an empty text.
std::string string_shown(const std::vector<BYTE>& resource, const std::wstring& name) {
  void* text = nullptr;
  UINT length = 0;
  if (!VerQueryValueW(resource.data(), (L"\\StringFileInfo\\080404B0\\" + name).c_str(), &text, &length)) {
    return "(absent)";
  }
  return quoted(length == 0 ? L"" : static_cast<const wchar_t*>(text));
}

}  // namespace

std::string utf8(const std::wstring& text) {
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(), length, nullptr, nullptr);
  return result;
}

std::string quoted(const std::wstring& text) { return "\"" + utf8(text) + "\""; }

std::string version_text(const std::wstring& dll) {
  const std::vector<BYTE> resource = version_resource(dll);
  void* block = nullptr;
  UINT length = 0;
  if (!VerQueryValueW(resource.data(), L"\\", &block, &length)) throw std::runtime_error("no fixed version block");
  const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(block);
  std::string lines = "file version " + number_shown(fixed->dwFileVersionMS, fixed->dwFileVersionLS) + "\n" +
                      "product version " + number_shown(fixed->dwProductVersionMS, fixed->dwProductVersionLS) + "\n";
  for (const wchar_t* name : {L"CompanyName", L"FileDescription", L"FileVersion", L"InternalName", L"OLESelfRegister",
                              L"OriginalFilename", L"ProductName", L"ProductVersion"}) {
    lines += utf8(name) + " " + string_shown(resource, name) + "\n";
  }
  return lines;
}

std::string export_text(const std::wstring& dll) {
  const ComponentFile file(dll);
  const LoadedImage image(file.module());
  std::string lines;
  for (const std::string& name : image.exports()) lines += name + "\n";
  return lines + std::to_string(image.export_count()) + " in all\n";
}

std::string image_text(const std::wstring& dll) {
  const ComponentFile file(dll);
  const LoadedImage image(file.module());
  const IMAGE_OPTIONAL_HEADER& header = image.headers().OptionalHeader;
  const WORD flags = header.DllCharacteristics;
  std::ostringstream lines;
  lines << "for Windows from version " << header.MajorSubsystemVersion << "." << header.MinorSubsystemVersion << "\n"
        << "address space layout randomisation " << ((flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE) != 0) << "\n"
        << "high-entropy addresses " << ((flags & 0x0020) != 0) << "\n"
        << "data execution prevention " << ((flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT) != 0) << "\n"
        << "no handlers of structured exceptions " << ((flags & IMAGE_DLLCHARACTERISTICS_NO_SEH) != 0) << "\n";
  std::map<std::string, std::set<std::string>> functions;
  for (const Import& import : image.imports()) {
    std::string library = import.library;
    std::transform(library.begin(), library.end(), library.begin(), [](unsigned char c) { return std::tolower(c); });
    functions[library].insert(import.function);
  }
  for (const auto& [library, names] : functions) {
    lines << "import " << library << "\n";
    for (const std::string& name : names) lines << "  " << name << "\n";
  }
  return lines.str();
}

}  // namespace corvelle::testing
