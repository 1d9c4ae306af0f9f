// component/type_information.h - the embedded type library as automation serves it.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace corvelle {

// The description of the class or interface `id`, read from the DLL's own resource. Clients look at every type of it:
// where the host's data access library is not registered, it is that of a twin of the library, in which a database is
// any object. A library that is missing or damaged is the system's own error.
HRESULT type_information(REFGUID id, ITypeInfo** result);

}  // namespace corvelle
