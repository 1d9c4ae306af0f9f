// console/type_library.h - what a type library says of the operations. It may be damaged: nothing in it is believed.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include <string>
#include <vector>

#include "component/class_description.h"

namespace corvelle::console {

// An operation as people read it.
struct DescribedOperation {
  MEMBERID member = MEMBERID_NIL;
  std::wstring name;
  std::wstring signature;  // "Center(Str As String) As String"
};

// The operations of an interface, as late-bound callers see them, without automation's own members.
// TYPE_E_INVDATAREAD where the description makes no sense.
HRESULT operations_of(ITypeInfo* type, std::vector<DescribedOperation>* operations);

// The interface of a class in its library.
HRESULT interface_in(ITypeLib* library, const ClassDescription& description, Microsoft::WRL::ComPtr<ITypeInfo>* type);

// The type library that is registered for hosts. Where this program is elevated, the machine's registration alone
// counts.
HRESULT load_registered_library(Microsoft::WRL::ComPtr<ITypeLib>* library);

// The type library in the file at a full path.
HRESULT load_library(const std::wstring& path, Microsoft::WRL::ComPtr<ITypeLib>* library);

// Whether the type library within the file describes every published operation: S_OK, or what is wrong. The system's
// reader may crash on a damaged one, so the doctor has this done by another process.
HRESULT read_library(const std::wstring& path);

}  // namespace corvelle::console
