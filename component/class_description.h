// component/class_description.h - the creatable classes as data.
#pragma once

#include <array>
#include <span>

#include "component/identifiers.h"
#include "component/operation_table.h"

namespace corvelle {

struct ClassDescription {
  GUID class_id;
  GUID interface_id;
  const wchar_t* name;
  const wchar_t* prog_id;  // the source of the class's errors, too
  const wchar_t* interface_name;
  const wchar_t* help;
  std::span<const Operation> operations;  // in vtable order
};

inline constexpr ClassDescription kClsValidateClass = {
    .class_id = kClsValidateId,
    .interface_id = kClsValidateInterfaceId,
    .name = L"ClsValidate",
    .prog_id = L"Corvelle.ClsValidate",
    .interface_name = L"_ClsValidate",
    .help = L"Text, date, number, database, grid and file operations.",
    .operations = kClsValidateOperations,
};

inline constexpr ClassDescription kClsVexAppClass = {
    .class_id = kClsVexAppId,
    .interface_id = kClsVexAppInterfaceId,
    .name = L"ClsVexApp",
    .prog_id = L"Corvelle.ClsVexApp",
    .interface_name = L"_ClsVexApp",
    .help = L"Text replacement, and one text slot a thread.",
    .operations = kClsVexAppOperations,
};

inline constexpr std::array kClasses = {&kClsValidateClass, &kClsVexAppClass};

}  // namespace corvelle
