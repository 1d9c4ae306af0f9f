// component/type_information.h - the embedded type library as automation serves it.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace corvelle {

// The description of the class or interface `id`, read from the DLL's own resource. A library that is missing or
// damaged is the system's own error.
HRESULT type_information(REFGUID id, ITypeInfo** result);

}  // namespace corvelle
