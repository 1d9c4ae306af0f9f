// late_bound.h - an object of the host's own that others drive by the names of its members.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <oaidl.h>

#include <functional>
#include <string>
#include <vector>

// What a member throws to refuse a call: the caller gets the HRESULT and the text.
struct Refusal {
  HRESULT result;
  const wchar_t* text;
};

// An automation object made of members. It begins with one reference, the maker's.
class LateBound : public IDispatch {
 public:
  // Arguments come in the order in which people write them, the value of an assignment last.
  using Arguments = std::vector<_variant_t>;
  using Member = std::function<_variant_t(const Arguments& arguments)>;

  LateBound() = default;
  // `interface_id` is one more interface that the object answers for; its members are reached by name, too.
  explicit LateBound(REFIID interface_id) : interface_id_(interface_id) {}
  virtual ~LateBound() = default;
  LateBound(const LateBound&) = delete;
  LateBound& operator=(const LateBound&) = delete;

  // Adds a member that is read or called, or one that is assigned. A property that is both is added twice.
  void on_get(const wchar_t* name, Member member, DISPID id = DISPID_UNKNOWN);
  void on_put(const wchar_t* name, Member member);

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong_argument) override;

 private:
  struct Entry {
    std::wstring name;
    DISPID id;
    WORD flags;
    Member member;
  };
  void add(const wchar_t* name, WORD flags, Member member, DISPID id);

  ULONG references_ = 1;
  IID interface_id_ = IID_IDispatch;
  std::vector<Entry> entries_;
};

// The object as a value for a caller, who gets the maker's reference.
_variant_t given(LateBound* object);

// A collection that scripts can walk, over what `item` makes for each index below `count`.
IUnknown* new_enumerator(std::size_t count, std::function<_variant_t(std::size_t index)> item);
