// component/class_description.h - the creatable classes as data.
#pragma once

#include <array>
#include <span>

#include "component/identifiers.h"
#include "component/operation_table.h"

namespace corvelle {

// Finds an operation by DISPID in one step: the published DISPIDs of a class all differ in their low bits.
class DispidIndex {
 public:
  template <std::size_t Count>
  consteval explicit DispidIndex(const std::array<Operation, Count>& operations) {
    std::array<bool, kSize> taken = {};
    for (std::size_t i = 0; i < Count; ++i) {
      const std::size_t bits = low_bits(operations[i].dispid);
      if (taken[bits]) internal::row_is_wrong("two DISPIDs share their low bits");
      taken[bits] = true;
      places_[bits] = static_cast<std::uint8_t>(i);
    }
  }

  // The only place where `dispid` can be; the caller compares.
  constexpr std::size_t place_of(DISPID dispid) const { return places_[low_bits(dispid)]; }

 private:
  static constexpr std::size_t kSize = 64;
  static constexpr std::size_t low_bits(DISPID dispid) { return static_cast<std::size_t>(dispid) % kSize; }

  std::array<std::uint8_t, kSize> places_ = {};
};

struct ClassDescription {
  GUID class_id;
  GUID interface_id;
  const wchar_t* name;
  const wchar_t* prog_id;  // the source of the class's errors, too
  const wchar_t* interface_name;
  const wchar_t* help;
  std::span<const Operation> operations;  // in vtable order
  DispidIndex dispids;
};

inline constexpr ClassDescription kClsValidateClass = {
    .class_id = kClsValidateId,
    .interface_id = kClsValidateInterfaceId,
    .name = L"ClsValidate",
    .prog_id = L"Corvelle.ClsValidate",
    .interface_name = L"_ClsValidate",
    .help = L"Text, date, number, database, grid and file operations.",
    .operations = kClsValidateOperations,
    .dispids = DispidIndex(kClsValidateOperations),
};

inline constexpr ClassDescription kClsVexAppClass = {
    .class_id = kClsVexAppId,
    .interface_id = kClsVexAppInterfaceId,
    .name = L"ClsVexApp",
    .prog_id = L"Corvelle.ClsVexApp",
    .interface_name = L"_ClsVexApp",
    .help = L"Text replacement, and one text slot a thread.",
    .operations = kClsVexAppOperations,
    .dispids = DispidIndex(kClsVexAppOperations),
};

inline constexpr std::array kClasses = {&kClsValidateClass, &kClsVexAppClass};

}  // namespace corvelle
