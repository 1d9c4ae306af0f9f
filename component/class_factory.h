// component/class_factory.h - the class factory of each class.
#pragma once

#include <windows.h>

namespace corvelle {

// A class factory for `class_id`; CLASS_E_CLASSNOTAVAILABLE for a class that is not the component's.
HRESULT class_factory(REFCLSID class_id, REFIID interface_id, void** result) noexcept;

}  // namespace corvelle
