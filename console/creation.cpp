#include "console/creation.h"

#include <objbase.h>

#include <string>

#include "component/registration_keys.h"
#include "console/disk_file.h"
#include "console/entry_point.h"
#include "console/registry_text.h"
#include "console/surroundings.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

using Microsoft::WRL::ComPtr;

HRESULT create_by_system(const ClassDescription& description, ComPtr<IDispatch>* result) {
  CLSID class_id = {};
  const HRESULT found = CLSIDFromProgID(description.prog_id, &class_id);
  if (FAILED(found)) return found;
  return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(result->GetAddressOf()));
}

// COM's own way to a class goes by the user's entries on Windows XP, and its look-up of a ProgID does on any.
HRESULT create_by_machine(const ClassDescription& description, ComPtr<IDispatch>* result) {
  const auto class_id = registry_text(kMachineClasses, std::wstring(description.prog_id) + L"\\Clsid");
  if (!class_id || !same_name(*class_id, text_of_id(description.class_id))) return CO_E_CLASSSTRING;
  const auto file = registry_text(kMachineClasses, server_key(description));
  if (!file) return REGDB_E_CLASSNOTREG;
  if (!is_full_path(*file)) return CO_E_DLLNOTFOUND;
  // Stays loaded, as COM would leave it.
  const HMODULE dll = LoadLibraryExW(file->c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (dll == nullptr) return HRESULT_FROM_WIN32(GetLastError());
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto get_class = entry_point<GetClassObject>(dll, "DllGetClassObject");
  if (get_class == nullptr) return CO_E_ERRORINDLL;
  ComPtr<IClassFactory> factory;
  const HRESULT found = get_class(description.class_id, IID_PPV_ARGS(factory.GetAddressOf()));
  return FAILED(found) ? found : factory->CreateInstance(nullptr, IID_PPV_ARGS(result->GetAddressOf()));
}

}  // namespace

HRESULT create(const ClassDescription& description, ComPtr<IDispatch>* result) {
  return is_elevated() ? create_by_machine(description, result) : create_by_system(description, result);
}

}  // namespace corvelle::console
