#include "tests/component/registration/machine.h"

#include <aclapi.h>
#include <objbase.h>

#include <iostream>
#include <stdexcept>

#include "component/class_description.h"
#include "tests/support/child_process.h"
#include "tests/support/registry_snapshot.h"

namespace corvelle::testing {
namespace {

// A 32-bit process sees the 64-bit system folder under another name.
std::wstring system_program(Bitness bitness, const std::wstring& name) {
  std::wstring windows(MAX_PATH, L'\0');
  windows.resize(GetWindowsDirectoryW(windows.data(), MAX_PATH));
  const wchar_t* other = kOtherBitness == Bitness::k64 ? L"sysnative" : L"syswow64";
  return windows + L"\\" + (bitness == kOwnBitness ? L"system32" : other) + L"\\" + name;
}

DWORD run(const std::wstring& program, const std::wstring& arguments) {
  return run_program(program, L"\"" + program + L"\" " + arguments);
}

// The keys that belong to the component alone, below Software\Classes.
std::vector<std::wstring> own_keys() {
  const auto shown = [](const GUID& id) {
    wchar_t text[39] = {};
    StringFromGUID2(id, text, 39);
    return std::wstring(text);
  };
  std::vector<std::wstring> keys = {L"TypeLib\\" + shown(kLibraryId)};
  for (const ClassDescription* description : kClasses) {
    keys.insert(keys.end(), {description->prog_id, L"CLSID\\" + shown(description->class_id),
                             L"Interface\\" + shown(description->interface_id)});
  }
  return keys;
}

void remove_tree(HKEY root, const std::wstring& path, REGSAM view) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_ALL_ACCESS | view, &key) != ERROR_SUCCESS) return;
  wchar_t name[256];
  for (DWORD length = 256; RegEnumKeyExW(key, 0, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
       length = 256) {
    remove_tree(key, name, view);
  }
  RegDeleteKeyW(key, L"");
  RegCloseKey(key);
}

}  // namespace

std::wstring built_dll(Bitness bitness) {
  return full_path(bitness == Bitness::k32 ? CORVELLE_WIN32_FOLDER L"\\Corvelle.dll"
                                           : CORVELLE_WIN64_FOLDER L"\\Corvelle.dll");
}

DWORD regsvr32(Bitness bitness, const std::wstring& dll) {
  return run(system_program(bitness, L"regsvr32.exe"), L"/s \"" + dll + L"\"");
}

DWORD regsvr32_remove(Bitness bitness, const std::wstring& dll) {
  return run(system_program(bitness, L"regsvr32.exe"), L"/u /s \"" + dll + L"\"");
}

bool host_works(Bitness bitness) {
  constexpr DWORD kWorks = 42;  // as the script says it
  return run(system_program(bitness, L"cscript.exe"), L"//nologo \"" + full_path(CORVELLE_HOST_SCRIPT) + L"\"") ==
         kWorks;
}

HRESULT create_class() {
  IUnknown* object = nullptr;
  const HRESULT created =
      CoCreateInstance(kClsValidateId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, reinterpret_cast<void**>(&object));
  if (object != nullptr) object->Release();
  return created;
}

std::vector<std::wstring> component_keys() {
  std::vector<std::wstring> lines;
  for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
    lines.push_back(view == KEY_WOW64_32KEY ? L"32-bit view" : L"64-bit view");
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
      for (const std::wstring& key : own_keys()) {
        const auto found = registry_snapshot(root, L"Software\\Classes\\" + key, view);
        lines.insert(lines.end(), found.begin(), found.end());
      }
    }
  }
  return lines.size() == 2 ? std::vector<std::wstring>() : lines;
}

void remove_component_keys() {
  for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
      for (const std::wstring& key : own_keys()) remove_tree(root, L"Software\\Classes\\" + key, view);
    }
  }
}

void set_default(HKEY root, const std::wstring& key, const std::wstring& value, REGSAM view) {
  HKEY opened = nullptr;
  if (RegCreateKeyExW(root, (L"Software\\Classes\\" + key).c_str(), 0, nullptr, 0, KEY_SET_VALUE | view, nullptr,
                      &opened, nullptr) != ERROR_SUCCESS) {
    throw std::runtime_error("cannot write to the registry");
  }
  RegSetValueExW(opened, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                 static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(opened);
}

CopyOfDll::CopyOfDll(const std::wstring& folder_name, Bitness bitness) {
  std::wstring temporary(MAX_PATH, L'\0');
  temporary.resize(GetTempPathW(MAX_PATH, temporary.data()));
  folder_ = temporary + folder_name;
  path_ = folder_ + L"\\Corvelle.dll";
  CreateDirectoryW(folder_.c_str(), nullptr);
  if (!CopyFileW(built_dll(bitness).c_str(), path_.c_str(), FALSE)) {
    throw std::runtime_error("cannot copy the DLL: " + std::to_string(GetLastError()));
  }
}

CopyOfDll::~CopyOfDll() {
  DeleteFileW(path_.c_str());
  RemoveDirectoryW(folder_.c_str());
}

WriteProtectedKey::WriteProtectedKey(HKEY root, const std::wstring& path, REGSAM view) {
  DWORD size = 0;
  if (RegOpenKeyExW(root, path.c_str(), 0, READ_CONTROL | WRITE_DAC | view, &key_) != ERROR_SUCCESS ||
      RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, nullptr, &size) != ERROR_INSUFFICIENT_BUFFER) {
    throw std::runtime_error("cannot read a key's rights");
  }
  before_.resize(size);
  RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data(), &size);

  BYTE everyone[SECURITY_MAX_SID_SIZE];
  DWORD everyone_size = sizeof(everyone);
  CreateWellKnownSid(WinWorldSid, nullptr, everyone, &everyone_size);
  BYTE storage[512];
  auto* list = reinterpret_cast<ACL*>(storage);
  InitializeAcl(list, sizeof(storage), ACL_REVISION);
  AddAccessDeniedAceEx(list, ACL_REVISION, CONTAINER_INHERIT_ACE, KEY_SET_VALUE | KEY_CREATE_SUB_KEY | DELETE,
                       everyone);
  AddAccessAllowedAceEx(list, ACL_REVISION, CONTAINER_INHERIT_ACE, KEY_ALL_ACCESS, everyone);
  SECURITY_DESCRIPTOR rights;
  InitializeSecurityDescriptor(&rights, SECURITY_DESCRIPTOR_REVISION);
  SetSecurityDescriptorDacl(&rights, TRUE, list, FALSE);
  if (RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, &rights) != ERROR_SUCCESS) {
    throw std::runtime_error("cannot set a key's rights");
  }
}

WriteProtectedKey::~WriteProtectedKey() {
  RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data());
  RegCloseKey(key_);
}

}  // namespace corvelle::testing
