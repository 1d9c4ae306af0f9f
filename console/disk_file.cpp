#include "console/disk_file.h"

#include <algorithm>
#include <vector>

#include "console/texts.h"

namespace corvelle::console {
namespace {

bool begins_with_drive(std::wstring_view path) {
  const wchar_t letter = path.empty() ? L' ' : path[0] | 0x20;  // in lower case
  return path.size() > 2 && letter >= L'a' && letter <= L'z' && path[1] == L':' && path[2] == L'\\';
}

// "server\share\…", where pipes are a share, too.
bool is_on_share(std::wstring_view path) {
  const std::size_t server_end = path.find(L'\\');
  if (server_end == 0 || server_end == std::wstring_view::npos) return false;
  const std::wstring_view share = path.substr(server_end + 1, path.find(L'\\', server_end + 1) - server_end - 1);
  return !share.empty() && !same_name(share, L"pipe") && !same_name(share, L"mailslot");
}

}  // namespace

bool is_full_path(std::wstring_view path) {
  constexpr std::wstring_view kShare = L"\\\\";
  constexpr std::wstring_view kLong = L"\\\\?\\";
  constexpr std::wstring_view kLongShare = L"\\\\?\\UNC\\";
  if (path.find_first_of(L"\"/") != std::wstring_view::npos) return false;
  if (path.starts_with(kLongShare)) return is_on_share(path.substr(kLongShare.size()));
  if (path.starts_with(kLong)) return begins_with_drive(path.substr(kLong.size()));
  if (path.starts_with(kShare)) return path.substr(0, 4) != L"\\\\.\\" && is_on_share(path.substr(kShare.size()));
  return begins_with_drive(path);
}

bool exists(const std::wstring& path) {
  return is_full_path(path) && GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A device's name may stand at the end of an ordinary path, and a share's server may give anything; so the type of what
// was opened is looked at, and nobody at its other end may act in this program's name.
DiskFile::DiskFile(const std::wstring& path) {
  if (!is_full_path(path)) return;
  handle_ = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_EXISTING, SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr);
  if (handle_ == INVALID_HANDLE_VALUE || GetFileType(handle_) != FILE_TYPE_DISK) return;
  LARGE_INTEGER size = {};
  if (GetFileSizeEx(handle_, &size)) size_ = static_cast<std::uint64_t>(size.QuadPart);
}

DiskFile::~DiskFile() {
  if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
}

bool DiskFile::read(std::uint64_t offset, void* bytes, DWORD count) const {
  if (offset > size_ || count > size_ - offset) return false;
  OVERLAPPED place = {};  // of a file that was opened for calls that wait: only where to begin
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  DWORD done = 0;
  return ReadFile(handle_, bytes, count, &done, &place) && done == count;
}

bool same_content(const std::wstring& left, const std::wstring& right) {
  constexpr std::uint64_t kPiece = 65536;
  const DiskFile files[] = {DiskFile(left), DiskFile(right)};
  const std::uint64_t size = files[0].size();
  if (size == 0 || size != files[1].size()) return false;
  std::vector<char> pieces[] = {std::vector<char>(kPiece), std::vector<char>(kPiece)};
  for (std::uint64_t at = 0; at < size; at += kPiece) {
    const auto count = static_cast<DWORD>(std::min(kPiece, size - at));
    if (!files[0].read(at, pieces[0].data(), count) || !files[1].read(at, pieces[1].data(), count)) return false;
    if (!std::equal(pieces[0].begin(), pieces[0].begin() + count, pieces[1].begin())) return false;
  }
  return true;
}

}  // namespace corvelle::console
