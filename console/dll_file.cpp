#include "console/dll_file.h"

#include <oleauto.h>
#include <wrl/client.h>

#include "component/class_description.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

using Microsoft::WRL::ComPtr;

std::string content_of(const std::wstring& path) {
  // Not a stream of the standard library: those know no wide names here.
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  std::string bytes(GetFileSize(file, nullptr), '\0');
  DWORD read = 0;
  ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
  CloseHandle(file);
  bytes.resize(read);
  return bytes;
}

// The structure at `offset` of a file's content, null where it does not fit.
template <class Structure>
const Structure* structure_at(const std::string& bytes, std::size_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(Structure)) return nullptr;
  return reinterpret_cast<const Structure*>(bytes.data() + offset);
}

std::wstring windows_folder() {
  wchar_t path[MAX_PATH] = {};
  GetWindowsDirectoryW(path, MAX_PATH);
  return std::wstring(path) + L"\\";
}

}  // namespace

std::wstring as_seen_from_here(const std::wstring& path, Bitness bitness) {
  const std::wstring system = windows_folder() + L"system32\\";
  if (bitness == kOwnBitness || !same_name(path.substr(0, system.size()), system)) return path;
  return windows_folder() + (bitness == Bitness::k64 ? L"sysnative\\" : L"syswow64\\") + path.substr(system.size());
}

bool exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

std::optional<Bitness> bitness_of(const std::wstring& path) {
  const std::string bytes = content_of(path);
  const auto* start = structure_at<IMAGE_DOS_HEADER>(bytes, 0);
  if (start == nullptr || start->e_magic != IMAGE_DOS_SIGNATURE) return {};
  const auto* headers = structure_at<IMAGE_NT_HEADERS32>(bytes, static_cast<std::size_t>(start->e_lfanew));
  if (headers == nullptr || headers->Signature != IMAGE_NT_SIGNATURE) return {};
  if ((headers->FileHeader.Characteristics & IMAGE_FILE_DLL) == 0) return {};
  switch (headers->FileHeader.Machine) {
    case IMAGE_FILE_MACHINE_I386: return Bitness::k32;
    case IMAGE_FILE_MACHINE_AMD64: return Bitness::k64;
    default: return {};
  }
}

bool same_content(const std::wstring& left, const std::wstring& right) { return content_of(left) == content_of(right); }

bool has_type_library(const std::wstring& path) {
  ComPtr<ITypeLib> library;
  if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library))) return false;
  for (const ClassDescription* description : kClasses) {
    ComPtr<ITypeInfo> type;
    if (FAILED(library->GetTypeInfoOfGuid(description->interface_id, &type))) return false;
  }
  return true;
}

}  // namespace corvelle::console
