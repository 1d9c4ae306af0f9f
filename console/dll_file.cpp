#include "console/dll_file.h"

#include "console/disk_file.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

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

std::optional<Bitness> bitness_of(const std::wstring& path) {
  const DiskFile file(path);
  IMAGE_DOS_HEADER start = {};
  if (!file.read(0, &start) || start.e_magic != IMAGE_DOS_SIGNATURE) return {};
  IMAGE_NT_HEADERS32 headers = {};
  // A place before the file's start is far behind its end this way.
  if (!file.read(static_cast<std::uint64_t>(start.e_lfanew), &headers)) return {};
  if (headers.Signature != IMAGE_NT_SIGNATURE) return {};
  if ((headers.FileHeader.Characteristics & IMAGE_FILE_DLL) == 0) return {};
  switch (headers.FileHeader.Machine) {
    case IMAGE_FILE_MACHINE_I386: return Bitness::k32;
    case IMAGE_FILE_MACHINE_AMD64: return Bitness::k64;
    default: return {};
  }
}

}  // namespace corvelle::console
