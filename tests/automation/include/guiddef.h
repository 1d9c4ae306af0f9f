// tests/automation/include/guiddef.h - identifiers, as the system's header of this name has them.
#pragma once

#include <cstdint>

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];

  friend constexpr bool operator==(const GUID&, const GUID&) = default;
};

using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline constexpr GUID IID_NULL = {};

namespace automation {

// The identifier of one of automation's own interfaces, which differ in their first part.
constexpr IID own_interface(std::uint32_t first) { return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}}; }

}  // namespace automation
