// tests/hosts/interposed.h - stands between an object of a host and whoever calls it.
#pragma once

#include <windows.h>

#include <dispex.h>
#include <oaidl.h>
#include <wrl/client.h>

#include <atomic>
#include <optional>

namespace corvelle::testing {

// A call of a member as it arrived; `exception` may be null.
struct Invocation {
  DISPID id;
  DISPPARAMS& parameters;
  VARIANT* result;  // null where none is wanted
  EXCEPINFO* exception;
};

// What happens whenever an object is called, before it answers. An HRESULT is answered in the object's place.
class Interference {
 public:
  Interference() = default;
  Interference(const Interference&) = delete;
  Interference& operator=(const Interference&) = delete;
  virtual ~Interference() = default;

  virtual std::optional<HRESULT> on_query(void** /*result*/) { return {}; }
  // E_NOTIMPL is answered consistently: the object then has IDispatchEx, too.
  virtual std::optional<HRESULT> on_lookup(DISPID* /*id*/) { return {}; }
  virtual std::optional<HRESULT> on_invoke(const Invocation& /*call*/) { return {}; }
  virtual std::optional<HRESULT> on_step(VARIANT* /*item*/, ULONG* /*fetched*/) { return {}; }
  // What the object behind has answered a member's call with.
  virtual HRESULT answered(const Invocation& /*call*/, HRESULT answer) { return answer; }
  // The object's last reference is given back. Must not throw.
  virtual void on_end() {}
  // The caller holds no reference to the object that it has just called.
  virtual void on_unheld() {}

  int live_objects = 0;
};

// Forwards every call to the object behind it, and interposes itself before each object that it answers with.
class Interposed final : public IDispatchEx, public IEnumVARIANT {
 public:
  // Takes over the caller's reference to `inner`, and is the caller's to release.
  static Interposed* before(IUnknown* inner, Interference& interference);

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
  STDMETHODIMP GetIDsOfNames(REFIID interface_id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID interface_id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong_argument) override;

  STDMETHODIMP GetDispID(BSTR name, DWORD options, DISPID* id) override;
  STDMETHODIMP InvokeEx(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, IServiceProvider*) override;
  STDMETHODIMP DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
  STDMETHODIMP GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

  STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override;
  STDMETHODIMP Skip(ULONG) override { return E_NOTIMPL; }
  STDMETHODIMP Reset() override { return E_NOTIMPL; }
  STDMETHODIMP Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  class Running;

  Interposed(IUnknown* inner, Interference& interference);
  virtual ~Interposed();
  void interpose(VARIANT& value) const;
  IDispatch& behind() const { return *static_cast<IDispatch*>(inner_); }

  IUnknown* inner_;
  Interference& interference_;
  bool extended_ = false;
  std::atomic<ULONG> references_ = 1;
};

}  // namespace corvelle::testing
