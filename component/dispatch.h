// component/dispatch.h - late binding from the operation table.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include "component/class_description.h"

namespace corvelle {

// IDispatch::GetIDsOfNames for a class: the first name is an operation's, the rest its parameters', whose identifiers
// are their positions from 0. ASCII letters match in either case. DISP_E_UNKNOWNNAME when any name is unknown.
HRESULT ids_of_names(const ClassDescription& description, REFIID interface_id, LPOLESTR* names, UINT count,
                     DISPID* ids);

// IDispatch::Invoke for a class, on `object`, the class's own interface.
HRESULT invoke(const ClassDescription& description, IDispatch* object, DISPID dispid, REFIID interface_id, LCID locale,
               WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument);

// DISP_E_EXCEPTION, with `exception` filled from the thread's error information, which it takes. Where `exception` is
// null, the information stays for the caller, as the platform's own Invoke leaves it.
HRESULT report_exception(HRESULT failure, EXCEPINFO* exception);

// `failure`, and no result, whatever stood in the caller's variable.
inline HRESULT without_result(HRESULT failure, VARIANT* result) {
  if (result != nullptr) VariantInit(result);
  return failure;
}

// The row of `dispid`; null where there is none.
inline const Operation* find_operation(const ClassDescription& description, DISPID dispid) {
  const Operation& operation = description.operations[description.dispids.place_of(dispid)];
  return operation.dispid == dispid ? &operation : nullptr;
}

inline constexpr GUID kNoInterface = {};  // IID_NULL, as a constant

// Whether the flags of an Invoke ask for a call, and for no assignment. Script hosts ask for a function's value as
// METHOD and PROPERTYGET at once.
constexpr bool is_call(WORD flags) {
  return (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == DISPATCH_METHOD;
}

// Whether a call may be one that hosts make over and over, of a plain operation, with nothing to own or to undo and the
// result asked for. The arguments are left for the operation's caller to see.
inline bool may_be_plain(const Operation& operation, REFIID interface_id, WORD flags, const DISPPARAMS* parameters,
                         const VARIANT* result) {
  return operation.plain && interface_id == kNoInterface && is_call(flags) && parameters != nullptr &&
         result != nullptr;
}

// The first of `operations` that is called as the one at `index`.
constexpr std::size_t first_with_call_of(std::span<const Operation> operations, std::size_t index) {
  std::size_t first = 0;
  while (operations[first].call != operations[index].call) ++first;
  return first;
}

// operation.call(…) for an operation of `kDescription`; inline where it gives a number, since such operations take no
// longer than a few calls do.
template <const ClassDescription& kDescription>
[[gnu::always_inline]] inline HRESULT call_of(const Operation& operation, IDispatch* object,
                                              const DISPPARAMS& parameters, VARIANT* result) {
  static constexpr std::span<const Operation> kOperations = kDescription.operations;
  HRESULT called = S_OK;
  const auto is_call_at = [&]<std::size_t Index>() {
    if constexpr (kOperations[Index].gives_number() && first_with_call_of(kOperations, Index) == Index) {
      if (operation.call != kOperations[Index].call) return false;
      called = kOperations[Index].call(operation, object, parameters, result);
      return true;
    }
    return false;
  };
  const bool inlined = [&]<std::size_t... Index>(std::index_sequence<Index...>) {
    return (is_call_at.template operator()<Index>() || ...);
  }(std::make_index_sequence<kOperations.size()>());
  return inlined ? called : operation.call(operation, object, parameters, result);
}

}  // namespace corvelle
