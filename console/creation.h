// console/creation.h - objects of the registered classes.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include "component/class_description.h"

namespace corvelle::console {

// A new object of the registered class, found by its ProgID as a script host finds it. Where this program is elevated,
// the machine's registration alone counts, as for other such programs since Windows Vista.
HRESULT create(const ClassDescription& description, Microsoft::WRL::ComPtr<IDispatch>* result);

}  // namespace corvelle::console
