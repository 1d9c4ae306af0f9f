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

}  // namespace corvelle
