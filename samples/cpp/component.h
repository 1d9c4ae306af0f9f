// component.h - Corvelle's two classes for this host: results as values, failures as exceptions.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <wrl/client.h>

#include <stdexcept>
#include <string>
#include <utility>

// Throws what `result` says, with the description that the component left, when it is a failure.
void check(HRESULT result);

// A call that failed.
class CallFailed : public std::runtime_error {
 public:
  CallFailed(HRESULT result, std::wstring description)
      : std::runtime_error("a call failed"), result(result), description(std::move(description)) {}
  const HRESULT result;
  const std::wstring description;
};

// A new object of a registered class, through its own interface. Needs an apartment.
template <class Interface>
Microsoft::WRL::ComPtr<Interface> created(REFCLSID class_id, REFIID interface_id) {
  Microsoft::WRL::ComPtr<Interface> object;
  check(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, interface_id,
                         reinterpret_cast<void**>(object.GetAddressOf())));
  return object;
}

inline _bstr_t bstr(const std::wstring& text) {
  return {SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false};
}

// Calls a member whose result is a text: text_from(*validate.Get(), &_ClsValidate::GetPath, bstr(path)).
template <class Interface, class Method, class... Arguments>
std::wstring text_from(Interface& object, Method method, const Arguments&... arguments) {
  BSTR result = nullptr;
  check((object.*method)(arguments..., &result));
  const _bstr_t owned(result, false);
  return {result, owned.length()};
}

// Calls a member whose result is a number or a VARIANT_BOOL.
template <class Value, class Interface, class Method, class... Arguments>
Value value_from(Interface& object, Method method, const Arguments&... arguments) {
  Value result = 0;
  check((object.*method)(arguments..., &result));
  return result;
}
