#include "console/list.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <vector>

#include "component/automation.h"
#include "console/place.h"
#include "console/texts.h"
#include "console/type_library.h"

namespace corvelle::console {
namespace {

using Microsoft::WRL::ComPtr;

// The type library that hosts see, or else that of the files that a package has side by side.
HRESULT load_any_library(ComPtr<ITypeLib>* library) {
  HRESULT loaded = load_registered_library(library);
  for (const wchar_t* name : {L"Corvelle.dll", L"Corvelle.tlb"}) {
    if (FAILED(loaded)) loaded = load_library(beside_this_program(name), library);
  }
  return loaded;
}

std::wstring help_of(ITypeInfo* type, MEMBERID member) {
  ScopedBstr help;
  type->GetDocumentation(member, nullptr, help.receive(), nullptr, nullptr);
  return {help.get() != nullptr ? help.get() : L"", help.view().size()};
}

HRESULT append_class(ITypeLib* library, const ClassDescription& description, std::wstring& text) {
  ComPtr<ITypeInfo> type;
  std::vector<DescribedOperation> operations;
  HRESULT read = interface_in(library, description, &type);
  if (SUCCEEDED(read)) read = operations_of(type.Get(), &operations);
  if (FAILED(read)) return read;
  text += std::wstring(text.empty() ? L"" : L"\n") + description.prog_id + L"\n";
  for (const DescribedOperation& operation : operations) {
    text += L"  " + operation.signature + L"\n      " + help_of(type.Get(), operation.member) + L"\n";
  }
  return S_OK;
}

}  // namespace

ExitStatus list_operations(const Streams& streams) {
  ComPtr<ITypeLib> library;
  HRESULT result = load_any_library(&library);
  std::wstring text;
  for (const ClassDescription* description : kClasses) {
    if (SUCCEEDED(result)) result = append_class(library.Get(), *description, text);
  }
  if (FAILED(result)) {
    streams.error.print_line(L"The type library can be read neither from the registered component nor from " +
                             beside_this_program(L"Corvelle.dll") + L". " + explained(result));
    return ExitStatus::failed;
  }
  streams.out.print(text);
  return ExitStatus::ok;
}

std::wstring signature_of(IDispatch* object, const std::wstring& operation) {
  ComPtr<ITypeInfo> type;
  std::vector<DescribedOperation> operations;
  if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type)) || type == nullptr) return {};
  if (FAILED(operations_of(type.Get(), &operations))) return {};
  for (const DescribedOperation& described : operations) {
    if (same_name(described.name, operation)) return described.signature;
  }
  return {};
}

}  // namespace corvelle::console
