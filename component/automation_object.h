// component/automation_object.h - what every class of the component does: life, late binding, error information.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <atomic>

#include "base/from_heap.h"
#include "component/boundary.h"
#include "component/class_description.h"
#include "component/dispatch.h"
#include "component/module.h"
#include "component/type_information.h"

namespace corvelle {

// The base of `Class`, which implements the dual interface `Interface` as `kDescription` describes it and adds nothing
// but its operations.
template <class Class, class Interface, const ClassDescription& kDescription>
class AutomationObject : public Interface, public ISupportErrorInfo, public IProvideClassInfo, public FromHeap {
 public:
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;

  // A new object's `interface_id`, with one reference.
  static HRESULT create(REFIID interface_id, void** result) noexcept {
    Class* object = new Class;
    if (object == nullptr) return E_OUTOFMEMORY;
    const HRESULT found = object->QueryInterface(interface_id, result);
    object->Release();
    return found;
  }

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (interface_id == IID_IUnknown || interface_id == IID_IDispatch || interface_id == kDescription.interface_id) {
      *result = static_cast<Interface*>(this);
    } else if (interface_id == IID_ISupportErrorInfo) {
      *result = static_cast<ISupportErrorInfo*>(this);
    } else if (interface_id == IID_IProvideClassInfo) {
      *result = static_cast<IProvideClassInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }

  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }

  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete static_cast<Class*>(this);
    return left;
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }

  STDMETHODIMP GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** result) override {
    return index == 0 ? described(kDescription.interface_id, result) : DISP_E_BADINDEX;
  }

  // Script hosts name an object by its class, "ClsValidate", where they can ask for it.
  STDMETHODIMP GetClassInfo(ITypeInfo** result) override { return described(kDescription.class_id, result); }

  STDMETHODIMP GetIDsOfNames(REFIID interface_id, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids) override {
    return ids_of_names(kDescription, interface_id, names, count, ids);
  }

  STDMETHODIMP Invoke(DISPID dispid, REFIID interface_id, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument) override {
    // Callers leave these uninitialised, and some free what they find in them whatever the outcome.
    if (exception != nullptr) *exception = {};
    const Operation* operation = find_operation(kDescription, dispid);
    if (operation != nullptr && may_be_plain(*operation, interface_id, flags, parameters, result)) {
      const HRESULT called = call_of<kDescription>(*operation, this, *parameters, result);
      if (called == S_OK) return S_OK;
      if (called != kOtherCall) return without_result(report_exception(called, exception), result);
    }
    const HRESULT answer =
        invoke(kDescription, this, dispid, interface_id, locale, flags, parameters, result, exception, wrong_argument);
    return FAILED(answer) ? without_result(answer, result) : answer;
  }

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID interface_id) override {
    return interface_id == kDescription.interface_id ? S_OK : S_FALSE;
  }

 protected:
  AutomationObject() = default;
  ~AutomationObject() = default;

  // Keeps this object, and with it the module, while the host's code runs: that may release the last reference to it.
  Microsoft::WRL::ComPtr<IUnknown> kept() { return static_cast<Interface*>(this); }

  template <class Result, class Call>
  static HRESULT answer(Result* result, Call&& operation) noexcept {
    return corvelle::answer(kDescription, result, std::forward<Call>(operation));
  }

  template <class Call>
  static HRESULT run(Call&& operation) noexcept {
    return corvelle::guarded(kDescription, std::forward<Call>(operation));
  }

 private:
  static HRESULT described(REFGUID id, ITypeInfo** result) noexcept {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    forget_error();
    return type_information(id, result);
  }

  std::atomic<ULONG> references_ = 1;
  ModuleReference module_;
};

}  // namespace corvelle
