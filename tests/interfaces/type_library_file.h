// tests/interfaces/type_library_file.h - a type library's own bytes, read without the platform.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace corvelle::testing {

// The numbers of the file's segments that hold something of a library of interfaces.
enum class Segment : std::uint8_t {
  types = 0,
  import_files = 2,
  guids = 5,
  names = 7,
  texts = 8,
  type_descriptors = 9,
  custom_data = 11,
};

// The words of the header, by their places.
enum HeaderPlace : std::uint8_t {
  kMagic = 0,
  kFormat = 4,
  kLibraryGuid = 8,
  kLocale = 12,
  kSecondLocale = 16,
  kVariant = 20,
  kLibraryVersion = 24,
  kTypeCount = 32,
  kHelp = 36,
  kName = 56,
};

// The words of a type's record, by their places in it.
enum TypePlace : std::uint8_t {
  kKind = 0,
  kMembers = 4,
  kUnknownSize2 = 8,
  kUnknownSize3 = 12,
  kMemberCount = 24,
  kTypeGuid = 44,
  kTypeFlags = 48,
  kTypeName = 52,
  kTypeVersion = 56,
  kTypeHelp = 60,
  kInterfacesAndTable = 76,
  kSize = 80,
  kBase = 84,
  kInherited = 88,
};
inline constexpr std::uint32_t kTypeSize = 100;

// The bytes of a file.
inline std::string bytes_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A type library's file. Reading past its end throws std::out_of_range.
class TypeLibraryFile {
 public:
  explicit TypeLibraryFile(std::string bytes) : bytes_(std::move(bytes)) {}

  std::uint32_t word(std::size_t place) const { return read<std::uint32_t>(place); }
  std::uint16_t half(std::size_t place) const { return read<std::uint16_t>(place); }

  // Where what is at `offset` of a segment stands in the file.
  std::size_t place(Segment segment, std::uint32_t offset) const {
    const std::size_t directory = 84 + 4 * std::size_t{word(kTypeCount)};
    return word(directory + 16 * static_cast<std::size_t>(segment)) + std::size_t{offset};
  }
  std::size_t type(std::uint32_t index) const { return place(Segment::types, kTypeSize * index); }

  GUID guid(std::uint32_t offset) const { return read<GUID>(place(Segment::guids, offset)); }
  std::string name(std::uint32_t offset) const {
    const std::size_t record = place(Segment::names, offset);
    return bytes_.substr(record + 12, word(record + 8) & 0xFF);
  }
  // The type that a member's name belongs to, as an offset among the types.
  std::uint32_t owner_of_name(std::uint32_t offset) const { return word(place(Segment::names, offset)); }
  std::string text(std::uint32_t offset) const {
    const std::size_t record = place(Segment::texts, offset);
    return bytes_.substr(record + 2, half(record));
  }
  // The bytes of a text among the custom data, where defaults are too: its type, its length, itself.
  std::string custom_text(std::uint32_t offset) const {
    const std::size_t record = place(Segment::custom_data, offset);
    if (half(record) != VT_BSTR) return "no text";
    return bytes_.substr(record + 2 + 4, read<std::uint32_t>(record + 2));
  }
  std::string_view bytes() const { return bytes_; }

 private:
  template <class Value>
  Value read(std::size_t place) const {
    std::array<char, sizeof(Value)> part = {};
    if (bytes_.copy(part.data(), part.size(), place) != part.size()) throw std::out_of_range("the file's end");
    return std::bit_cast<Value>(part);
  }

  std::string bytes_;
};

}  // namespace corvelle::testing
