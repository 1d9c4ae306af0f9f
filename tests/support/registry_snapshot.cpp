#include "tests/support/registry_snapshot.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <iostream>

namespace corvelle::testing {
namespace {

std::vector<std::wstring> subkeys_of(HKEY key) {
  std::vector<std::wstring> names;
  wchar_t name[256];
  for (DWORD index = 0;; ++index) {
    DWORD length = 256;
    if (RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    names.emplace_back(name, length);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::wstring shown(DWORD type, const std::vector<BYTE>& bytes) {
  if (type == REG_SZ && bytes.size() >= sizeof(wchar_t)) {
    return L"\"" + std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t) - 1) +
           L"\"";
  }
  std::wstring text = L"type " + std::to_wstring(type) + L":";
  for (const BYTE byte : bytes) {
    wchar_t digits[4];
    std::swprintf(digits, 4, L" %02x", static_cast<unsigned>(byte));
    text += digits;
  }
  return text;
}

std::vector<std::wstring> values_of(HKEY key) {
  std::vector<std::wstring> lines;
  wchar_t name[256];
  static std::vector<BYTE> bytes(65536);  // kept: there are tens of thousands of keys
  for (DWORD index = 0;; ++index) {
    DWORD length = 256;
    DWORD type = 0;
    auto size = static_cast<DWORD>(bytes.size());
    if (RegEnumValueW(key, index, name, &length, nullptr, &type, bytes.data(), &size) != ERROR_SUCCESS) break;
    const std::wstring shown_name = length == 0 ? L"(default)" : std::wstring(name, length);
    lines.push_back(shown_name + L" = " + shown(type, {bytes.begin(), bytes.begin() + size}));
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

void append(HKEY root, const std::wstring& path, REGSAM view, std::vector<std::wstring>& lines) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS) return;
  if (!path.empty()) lines.push_back(path);
  for (const std::wstring& value : values_of(key)) lines.push_back(path + L" " + value);
  for (const std::wstring& name : subkeys_of(key)) append(root, path.empty() ? name : path + L"\\" + name, view, lines);
  RegCloseKey(key);
}

void remove_below(HKEY key) {
  for (const std::wstring& name : subkeys_of(key)) {
    HKEY child = nullptr;
    if (RegOpenKeyExW(key, name.c_str(), 0, KEY_ALL_ACCESS, &child) != ERROR_SUCCESS) continue;
    remove_below(child);
    RegCloseKey(child);
    RegDeleteKeyW(key, name.c_str());
  }
}

void require(LSTATUS status, const char* step) {
  if (status == ERROR_SUCCESS) return;
  std::cerr << step << " failed: " << status << "\n";
  std::abort();
}

}  // namespace

std::vector<std::wstring> registry_snapshot(HKEY root, const std::wstring& path, REGSAM view) {
  std::vector<std::wstring> lines;
  append(root, path, view, lines);
  return lines;
}

TemporaryClassesRoot::TemporaryClassesRoot()
    : path_(L"Software\\Temporary classes of process " + std::to_wstring(GetCurrentProcessId())) {
  const auto create = [](HKEY root, const std::wstring& path, HKEY* key) {
    require(RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key, nullptr),
            "Creating a temporary key");
  };
  create(HKEY_CURRENT_USER, path_, &machine_);
  create(machine_, L"Software\\Classes", &key_);
  require(RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_), "RegOverridePredefKey");
  require(RegOverridePredefKey(HKEY_CLASSES_ROOT, key_), "RegOverridePredefKey");
}

TemporaryClassesRoot::~TemporaryClassesRoot() {
  RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  RegCloseKey(key_);
  remove_below(machine_);
  RegCloseKey(machine_);
  RegDeleteKeyW(HKEY_CURRENT_USER, path_.c_str());
}

}  // namespace corvelle::testing
