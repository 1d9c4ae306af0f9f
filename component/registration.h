// component/registration.h - what registers the component and takes its registration back.
#pragma once

#include <windows.h>

namespace corvelle {

// Writes the entries of both classes, their interfaces and the type library among the machine's classes, for this file;
// what a user has registered for himself stays as it is, here and in removing.
// A failure leaves the registry as it was and is the plain HRESULT of the system's error.
HRESULT register_server() noexcept;

// Removes the component's entries but for those of another file that is registered in this one's place, and those
// that the other bitness still needs: it shares the ProgIDs and the type library's entry. No error when there is
// nothing to remove. After a failure it can be repeated.
HRESULT unregister_server() noexcept;

// Likewise for the DLL `file` of this bitness, among this user's own classes; nobody needs rights for that.
HRESULT register_for_user(const wchar_t* file) noexcept;
HRESULT unregister_for_user(const wchar_t* file) noexcept;

}  // namespace corvelle
