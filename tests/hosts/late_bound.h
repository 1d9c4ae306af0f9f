// tests/hosts/late_bound.h - objects of a host that are driven by name, for tests of what drives them.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <wrl/client.h>

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/hosts/journal.h"

namespace corvelle::testing {

// A call of a member as it arrived. Arguments count from 0 in the order in which people write them, the value of an
// assignment last.
class MemberCall {
 public:
  MemberCall(DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception)
      : exception(exception), parameters_(parameters), result_(result) {}

  // Throw the BareAnswer of a type mismatch for an argument of another type; nothing is converted.
  std::int16_t int16(UINT index) const;
  std::u16string text(UINT index) const;
  IDispatch* object(UINT index) const;

  void give(std::u16string_view text) const;
  void give(std::int32_t number) const;
  void give_object(IDispatch* object) const;  // with the caller's reference
  void give_unknown(IUnknown* object) const;  // likewise
  VARIANT* result() const { return result_; }

  EXCEPINFO* exception;  // may be null

 private:
  const VARIANT& argument(UINT index, VARTYPE type) const;

  DISPPARAMS& parameters_;
  VARIANT* result_;
};

// What a member throws to answer with an HRESULT and nothing else.
struct BareAnswer {
  HRESULT result;
};

// An automation object made of members. Names are those that were added and no others, case included. A HostFailure
// that a member throws is answered as an exception of automation. One that lives counts among the journal's live
// objects.
class LateBound : public IDispatch {
 public:
  using Member = std::function<void(MemberCall& call)>;

  explicit LateBound(Journal& journal) : journal_(journal), live_(journal) {}
  virtual ~LateBound() = default;
  LateBound(const LateBound&) = delete;
  LateBound& operator=(const LateBound&) = delete;

  // `flags` are those of IDispatch::Invoke that the member answers to.
  void add(const wchar_t* name, WORD flags, Member member, DISPID id = DISPID_UNKNOWN);
  void remove(const wchar_t* name);
  // The object answers for that interface, too.
  void provide(REFIID interface_id) { provided_.push_back(interface_id); }

  // How often the name was looked up, and how many references are held.
  int lookups(const wchar_t* name) const;
  ULONG references() const { return references_; }

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
  STDMETHODIMP GetIDsOfNames(REFIID interface_id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID interface_id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong_argument) override;

 private:
  struct Entry {
    std::u16string name;
    DISPID id;
    WORD flags;
    Member member;
  };

  HRESULT answer_of(const Member& member, MemberCall& call) const;

  Journal& journal_;
  LiveObject live_;
  std::atomic<ULONG> references_ = 1;
  std::vector<IID> provided_;
  std::vector<Entry> members_;
  std::map<std::u16string, int, std::less<>> lookups_;
};

// `object` with the reference that comes with it. (ComPtr's own Attach takes another one in mingw's header.)
template <class Object>
Microsoft::WRL::ComPtr<Object> owned(Object* object) {
  Microsoft::WRL::ComPtr<Object> result;
  *result.GetAddressOf() = object;
  return result;
}

// An enumerator over what `next` gives: it fills the VARIANT with the next item, or returns false behind the last.
// A HostFailure that it throws is answered with its HRESULT, and with its texts as error information of the thread.
IUnknown* new_enumerator(Journal& journal, std::function<bool(VARIANT& item)> next);

}  // namespace corvelle::testing
