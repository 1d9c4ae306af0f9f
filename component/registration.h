// component/registration.h - self-registration.
#pragma once

#include <windows.h>

namespace corvelle {

// Writes the entries of both classes, their interfaces and the type library below HKEY_CLASSES_ROOT, for this file.
// A failure leaves the registry as it was and is the plain HRESULT of the system's error.
HRESULT register_server() noexcept;

// Removes what still points at this very file, and what no other registration of the component needs: the other
// bitness shares the ProgIDs and the type library's entry. No error when there is nothing to remove.
HRESULT unregister_server() noexcept;

}  // namespace corvelle
