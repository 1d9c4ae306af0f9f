// console/disk_file.h - files at paths that somebody else wrote down.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace corvelle::console {

// Whether the path leads to one place, whatever the current folder is, and neither to a device nor to a pipe.
bool is_full_path(std::wstring_view path);

// Whether a file or folder is there, at a full path.
bool exists(const std::wstring& path);

// An ordinary file on a disk, open for reading. What waits for its reader, as a pipe or a console does, is none, nor is
// a folder.
class DiskFile {
 public:
  explicit DiskFile(const std::wstring& path);
  ~DiskFile();
  DiskFile(const DiskFile&) = delete;
  DiskFile& operator=(const DiskFile&) = delete;

  // 0 where there is no such file.
  std::uint64_t size() const { return size_; }

  // Reads the bytes at `offset`; false where there are not so many.
  bool read(std::uint64_t offset, void* bytes, DWORD count) const;

  // Likewise, a structure.
  template <class Structure>
  bool read(std::uint64_t offset, Structure* structure) const {
    return read(offset, structure, sizeof(*structure));
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
  std::uint64_t size_ = 0;
};

// Whether both files are there and have the same content.
bool same_content(const std::wstring& left, const std::wstring& right);

}  // namespace corvelle::console
