#include "late_bound.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

bool same_name(const std::wstring& left, const wchar_t* right) { return lstrcmpiW(left.c_str(), right) == 0; }

class Enumerator final : public IEnumVARIANT {
 public:
  Enumerator(std::size_t count, std::function<_variant_t(std::size_t)> item) : count_(count), item_(std::move(item)) {}
  virtual ~Enumerator() = default;

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
    ULONG given = 0;
    for (; given < count && next_ < count_; ++given) items[given] = item_(next_++).Detach();
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const std::size_t skipped = std::min<std::size_t>(count, count_ - next_);
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumVARIANT** result) override {
    *result = new Enumerator(count_, item_);
    return (*result)->Skip(static_cast<ULONG>(next_));
  }

 private:
  ULONG references_ = 1;
  std::size_t count_;
  std::size_t next_ = 0;
  std::function<_variant_t(std::size_t)> item_;
};

// A caller passes the last argument first, and may pass a reference to a variable of its own.
LateBound::Arguments in_order(const DISPPARAMS& parameters) {
  LateBound::Arguments arguments;
  for (UINT i = parameters.cArgs; i-- > 0;) {
    _variant_t value;
    _com_util::CheckError(VariantCopyInd(&value, &parameters.rgvarg[i]));
    arguments.push_back(value);
  }
  return arguments;
}

HRESULT refused(HRESULT result, const wchar_t* text, EXCEPINFO* exception) {
  if (exception == nullptr) return result;
  *exception = {};
  exception->scode = result;
  exception->bstrSource = _bstr_t(L"Host").Detach();
  exception->bstrDescription = _bstr_t(text).Detach();
  return DISP_E_EXCEPTION;
}

}  // namespace

void LateBound::add(const wchar_t* name, WORD flags, Member member, DISPID id) {
  const auto same =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return same_name(entry.name, name); });
  if (same != entries_.end()) id = same->id;
  if (id == DISPID_UNKNOWN) id = static_cast<DISPID>(entries_.size()) + 1;
  entries_.push_back({name, id, flags, std::move(member)});
}

void LateBound::on_get(const wchar_t* name, Member member, DISPID id) {
  add(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(member), id);
}

void LateBound::on_put(const wchar_t* name, Member member) {
  add(name, DISPATCH_PROPERTYPUT, std::move(member), DISPID_UNKNOWN);
}

STDMETHODIMP LateBound::QueryInterface(REFIID interface_id, void** result) {
  const bool known = interface_id == IID_IUnknown || interface_id == IID_IDispatch || interface_id == interface_id_;
  *result = known ? static_cast<IDispatch*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

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

STDMETHODIMP LateBound::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids) {
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return same_name(entry.name, names[0]); });
  if (found == entries_.end() || count != 1) return DISP_E_UNKNOWNNAME;
  ids[0] = found->id;
  return S_OK;
}

STDMETHODIMP LateBound::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT* /*wrong_argument*/) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.id == id && (entry.flags & flags) != 0; });
  if (found == entries_.end()) return DISP_E_MEMBERNOTFOUND;
  try {
    _variant_t value = found->member(in_order(*parameters));
    if (result != nullptr) *result = value.Detach();
    return S_OK;
  } catch (const Refusal& refusal) {
    return refused(refusal.result, refusal.text, exception);
  } catch (const _com_error& error) {
    return refused(error.Error(), L"An argument has a wrong type.", exception);
  } catch (const std::out_of_range&) {
    return DISP_E_BADPARAMCOUNT;
  }
}

_variant_t given(LateBound* object) { return _variant_t(static_cast<IDispatch*>(object), false); }

IUnknown* new_enumerator(std::size_t count, std::function<_variant_t(std::size_t index)> item) {
  return new Enumerator(count, std::move(item));
}
