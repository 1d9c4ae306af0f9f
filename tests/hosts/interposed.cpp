#include "tests/hosts/interposed.h"

#include <oleauto.h>

#include <vector>

namespace corvelle::testing {

// Keeps the object alive while it runs, and tells where nobody else does.
class Interposed::Running {
 public:
  explicit Running(Interposed& object) : object_(object) { object_.AddRef(); }
  ~Running() {
    if (object_.references_ == 1) object_.interference_.on_unheld();
    object_.Release();
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Interposed& object_;
};

Interposed* Interposed::before(IUnknown* inner, Interference& interference) {
  return new Interposed(inner, interference);
}

Interposed::Interposed(IUnknown* inner, Interference& interference) : inner_(inner), interference_(interference) {
  ++interference_.live_objects;
}

Interposed::~Interposed() {
  inner_->Release();
  --interference_.live_objects;
}

STDMETHODIMP Interposed::QueryInterface(REFIID interface_id, void** result) {
  *result = nullptr;
  const Microsoft::WRL::ComPtr<IDispatchEx> self(this);  // asked, it need not be held
  if (const auto answer = interference_.on_query(result)) return *answer;
  Microsoft::WRL::ComPtr<IUnknown> provided;
  const bool extended = extended_ && interface_id == __uuidof(IDispatchEx);
  if (!extended && FAILED(inner_->QueryInterface(interface_id, reinterpret_cast<void**>(provided.GetAddressOf())))) {
    return E_NOINTERFACE;
  }
  *result = interface_id == IID_IEnumVARIANT ? static_cast<void*>(static_cast<IEnumVARIANT*>(this))
                                             : static_cast<IDispatchEx*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) Interposed::Release() {
  const ULONG left = --references_;
  if (left > 0) return left;
  interference_.on_end();
  delete this;
  return 0;
}

STDMETHODIMP Interposed::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

STDMETHODIMP Interposed::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** result) {
  *result = nullptr;
  return DISP_E_BADINDEX;
}

STDMETHODIMP Interposed::GetIDsOfNames(REFIID interface_id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
  const Running running(*this);
  if (const auto answer = interference_.on_lookup(ids)) {
    extended_ = extended_ || *answer == E_NOTIMPL;
    return *answer;
  }
  return behind().GetIDsOfNames(interface_id, names, count, locale, ids);
}

STDMETHODIMP Interposed::GetDispID(BSTR name, DWORD /*options*/, DISPID* id) {
  const Running running(*this);
  if (const auto answer = interference_.on_lookup(id)) return *answer;
  return behind().GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, id);
}

STDMETHODIMP Interposed::Invoke(DISPID id, REFIID interface_id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument) {
  const Running running(*this);
  if (const auto answer = interference_.on_invoke({id, *parameters, result, exception})) return *answer;
  std::vector<VARIANT> arguments(parameters->rgvarg, parameters->rgvarg + parameters->cArgs);
  for (VARIANT& argument : arguments) {
    if (V_VT(&argument) != VT_DISPATCH) continue;
    if (const auto* own = dynamic_cast<Interposed*>(V_DISPATCH(&argument))) V_DISPATCH(&argument) = &own->behind();
  }
  DISPPARAMS forwarded = *parameters;
  forwarded.rgvarg = arguments.data();
  const HRESULT answer =
      behind().Invoke(id, interface_id, locale, flags, &forwarded, result, exception, wrong_argument);
  if (SUCCEEDED(answer) && result != nullptr) interpose(*result);
  return interference_.answered({id, *parameters, result, exception}, answer);
}

STDMETHODIMP Interposed::InvokeEx(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                  EXCEPINFO* exception, IServiceProvider* /*caller*/) {
  return Invoke(id, IID_NULL, locale, flags, parameters, result, exception, nullptr);
}

STDMETHODIMP Interposed::Next(ULONG count, VARIANT* items, ULONG* fetched) {
  const Running running(*this);
  if (const auto answer = interference_.on_step(items, fetched)) return *answer;
  const HRESULT answer = static_cast<IEnumVARIANT*>(inner_)->Next(count, items, fetched);
  if (answer == S_OK) interpose(*items);
  return answer;
}

void Interposed::interpose(VARIANT& value) const {
  if (V_VT(&value) != VT_DISPATCH && V_VT(&value) != VT_UNKNOWN) return;
  if (V_UNKNOWN(&value) == nullptr) return;
  V_DISPATCH(&value) = before(V_UNKNOWN(&value), interference_);
}

}  // namespace corvelle::testing
