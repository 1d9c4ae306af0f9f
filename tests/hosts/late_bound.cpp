#include "tests/hosts/late_bound.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <new>
#include <utility>

namespace corvelle::testing {
namespace {

BSTR bstr(std::u16string_view text) {
  return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
}

std::u16string_view as_text(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }

class Enumerator final : public IEnumVARIANT {
 public:
  Enumerator(Journal& journal, std::function<bool(VARIANT&)> next)
      : journal_(journal), live_(journal), next_(std::move(next)) {}
  virtual ~Enumerator() = default;
  Enumerator(const Enumerator&) = delete;
  Enumerator& operator=(const Enumerator&) = delete;

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    *result = interface_id == IID_IUnknown || interface_id == IID_IEnumVARIANT ? this : nullptr;
    if (*result == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    if (fetched != nullptr) *fetched = 0;
    if (count != 1) return E_INVALIDARG;
    if (journal_.steps_instead) {
      if (const auto answer = journal_.steps_instead(*items)) return *answer;
    }
    try {
      if (!next_(*items)) return S_FALSE;
    } catch (const HostFailure& failure) {
      Microsoft::WRL::ComPtr<ICreateErrorInfo> information;
      Microsoft::WRL::ComPtr<IErrorInfo> finished;
      if (SUCCEEDED(CreateErrorInfo(&information)) && SUCCEEDED(information.As(&finished))) {
        information->SetDescription(reinterpret_cast<OLECHAR*>(const_cast<char16_t*>(failure.description.c_str())));
        information->SetSource(reinterpret_cast<OLECHAR*>(const_cast<char16_t*>(failure.source.c_str())));
        SetErrorInfo(0, finished.Get());
      }
      return failure.hresult;
    }
    if (fetched != nullptr) *fetched = 1;
    return S_OK;
  }
  STDMETHODIMP Skip(ULONG /*count*/) override { return E_NOTIMPL; }
  STDMETHODIMP Reset() override { return E_NOTIMPL; }
  STDMETHODIMP Clone(IEnumVARIANT** /*result*/) override { return E_NOTIMPL; }

 private:
  Journal& journal_;
  LiveObject live_;
  std::atomic<ULONG> references_ = 1;
  std::function<bool(VARIANT&)> next_;
};

}  // namespace

const VARIANT& MemberCall::argument(UINT index, VARTYPE type) const {
  if (index >= parameters_.cArgs) throw BareAnswer{DISP_E_BADPARAMCOUNT};
  const VARIANT& given = parameters_.rgvarg[parameters_.cArgs - 1 - index];
  const VARIANT& result =
      V_VT(&given) == (VT_VARIANT | VT_BYREF) ? *V_VARIANTREF(&given) : given;  // a script's variable
  if (V_VT(&result) != type) throw BareAnswer{DISP_E_TYPEMISMATCH};
  return result;
}

std::int16_t MemberCall::int16(UINT index) const { return V_I2(&argument(index, VT_I2)); }

std::u16string MemberCall::text(UINT index) const {
  const BSTR value = V_BSTR(&argument(index, VT_BSTR));
  return {reinterpret_cast<const char16_t*>(value), SysStringLen(value)};
}

IDispatch* MemberCall::object(UINT index) const { return V_DISPATCH(&argument(index, VT_DISPATCH)); }

void MemberCall::give(std::u16string_view text) const {
  V_VT(result_) = VT_BSTR;
  V_BSTR(result_) = bstr(text);
}

void MemberCall::give(std::int32_t number) const {
  V_VT(result_) = VT_I4;
  V_I4(result_) = number;
}

void MemberCall::give_object(IDispatch* object) const {
  V_VT(result_) = VT_DISPATCH;
  V_DISPATCH(result_) = object;
}

void MemberCall::give_unknown(IUnknown* object) const {
  V_VT(result_) = VT_UNKNOWN;
  V_UNKNOWN(result_) = object;
}

void LateBound::add(const wchar_t* name, WORD flags, Member member, DISPID id) {
  if (id == DISPID_UNKNOWN) id = static_cast<DISPID>(1000 + members_.size());
  members_.push_back({std::u16string(as_text(name)), id, flags, std::move(member)});
}

void LateBound::remove(const wchar_t* name) {
  std::erase_if(members_, [&](const Entry& entry) { return entry.name == as_text(name); });
}

int LateBound::lookups(const wchar_t* name) const {
  const auto found = lookups_.find(as_text(name));
  return found == lookups_.end() ? 0 : found->second;
}

STDMETHODIMP LateBound::QueryInterface(REFIID interface_id, void** result) {
  const bool provided = interface_id == IID_IUnknown || interface_id == IID_IDispatch ||
                        std::find(provided_.begin(), provided_.end(), interface_id) != provided_.end();
  *result = provided ? static_cast<IDispatch*>(this) : nullptr;
  if (!provided) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) LateBound::AddRef() { return ++references_; }

STDMETHODIMP_(ULONG) LateBound::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP LateBound::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

STDMETHODIMP LateBound::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** result) {
  *result = nullptr;
  return DISP_E_BADINDEX;
}

STDMETHODIMP LateBound::GetIDsOfNames(REFIID /*interface_id*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                      DISPID* ids) {
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const std::u16string_view name = as_text(names[0]);
  ++lookups_[std::u16string(name)];
  if (journal_.looks_up_instead) {
    if (const auto answer = journal_.looks_up_instead()) return *answer;
  }
  const auto found =
      std::find_if(members_.begin(), members_.end(), [&](const Entry& entry) { return entry.name == name; });
  if (found == members_.end() || count != 1) return DISP_E_UNKNOWNNAME;
  ids[0] = found->id;
  return S_OK;
}

STDMETHODIMP LateBound::Invoke(DISPID id, REFIID /*interface_id*/, LCID /*locale*/, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT* /*wrong_argument*/) {
  const auto found = std::find_if(members_.begin(), members_.end(),
                                  [&](const Entry& entry) { return entry.id == id && (entry.flags & flags) != 0; });
  if (found == members_.end()) return DISP_E_MEMBERNOTFOUND;
  const bool puts = (flags & DISPATCH_PROPERTYPUT) != 0;
  const UINT named = puts ? 1 : 0;
  if (parameters->cNamedArgs != named || (puts && parameters->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)) {
    return DISP_E_PARAMNOTFOUND;
  }
  VARIANT unwanted;
  VariantInit(&unwanted);
  MemberCall call(*parameters, result != nullptr ? result : &unwanted, exception);
  const HRESULT answer = answer_of(found->member, call);
  VariantClear(&unwanted);
  return answer;
}

HRESULT LateBound::answer_of(const Member& member, MemberCall& call) const {
  try {
    if (journal_.answers_instead) {
      if (const auto answer = journal_.answers_instead(call)) return *answer;
    }
    member(call);
    return S_OK;
  } catch (const HostFailure& failure) {
    if (call.exception != nullptr) {
      call.exception->scode = failure.hresult;
      call.exception->bstrDescription = bstr(failure.description);
      call.exception->bstrSource = bstr(failure.source);
    }
    return DISP_E_EXCEPTION;
  } catch (const BareAnswer& bare) {
    return bare.result;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

IUnknown* new_enumerator(Journal& journal, std::function<bool(VARIANT& item)> next) {
  return new Enumerator(journal, std::move(next));
}

}  // namespace corvelle::testing
