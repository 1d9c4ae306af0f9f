// component/dispatch.h - late binding from the operation table.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include "component/class_description.h"

namespace corvelle {

// IDispatch::GetIDsOfNames for a class: the first name is an operation's, the rest its parameters', whose identifiers
// are their positions from 0. ASCII letters match in either case. DISP_E_UNKNOWNNAME when any name is unknown.
HRESULT ids_of_names(const ClassDescription& description, REFIID interface_id, LPOLESTR* names, UINT count,
                     DISPID* ids);

// IDispatch::Invoke for a class, on `object`, the class's own interface.
HRESULT invoke(const ClassDescription& description, IDispatch* object, DISPID dispid, REFIID interface_id, LCID locale,
               WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument);

// DISP_E_EXCEPTION, with `exception`, which may be null, filled from the thread's error information, which it takes.
HRESULT report_exception(HRESULT failure, EXCEPINFO* exception);

// The row of `dispid`; null where there is none.
inline const Operation* find_operation(const ClassDescription& description, DISPID dispid) {
  const std::size_t place = description.dispids.place_of(dispid);
  if (place >= description.operations.size()) return nullptr;
  const Operation& operation = description.operations[place];
  return operation.dispid == dispid ? &operation : nullptr;
}

// The member of `object` that `operation` stands for. COM defines an interface as a table of functions.
inline Member member_of(const Operation& operation, IDispatch* object) {
  return (*reinterpret_cast<Member* const*>(object))[operation.vtable_place];
}

inline constexpr GUID kNoInterface = {};  // IID_NULL, as a constant

// Whether the call is one that hosts make over and over: every argument in its place and of the declared type, so that
// there is nothing to own or to undo, and the result asked for.
inline bool is_plain_call(const Operation& operation, REFIID interface_id, WORD flags, const DISPPARAMS* parameters,
                          const VARIANT* result) {
  if (interface_id != kNoInterface || (flags & DISPATCH_METHOD) == 0) return false;
  if (parameters == nullptr || result == nullptr) return false;
  const UINT count = operation.parameter_count;
  if (!operation.plain || parameters->cArgs != count || parameters->cNamedArgs != 0) return false;
  if (parameters->rgvarg == nullptr) return count == 0;
  for (UINT i = 0; i < count; ++i) {
    if (V_VT(&parameters->rgvarg[i]) != operation.types_from_last[i]) return false;
  }
  return true;
}

}  // namespace corvelle
