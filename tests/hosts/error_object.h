// tests/hosts/error_object.h - error information that is an object of the host's own.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <atomic>
#include <functional>
#include <utility>

namespace corvelle::testing {

// Answers both texts by `text`, where there is one, and runs `at_end` when its last reference is given back.
class ErrorObject final : public IErrorInfo {
 public:
  explicit ErrorObject(std::function<void()> at_end, std::function<HRESULT(BSTR* text)> text = nullptr)
      : at_end_(std::move(at_end)), text_(std::move(text)) {}
  virtual ~ErrorObject() = default;
  ErrorObject(const ErrorObject&) = delete;
  ErrorObject& operator=(const ErrorObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    const bool known = interface_id == IID_IUnknown || interface_id == IID_IErrorInfo;
    *result = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left > 0) return left;
    at_end_();
    delete this;
    return 0;
  }
  STDMETHODIMP GetGUID(GUID* /*id*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetSource(BSTR* source) override { return text_ ? text_(source) : E_NOTIMPL; }
  STDMETHODIMP GetDescription(BSTR* description) override { return text_ ? text_(description) : E_NOTIMPL; }
  STDMETHODIMP GetHelpFile(BSTR* /*file*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetHelpContext(DWORD* /*context*/) override { return E_NOTIMPL; }

 private:
  std::atomic<ULONG> references_ = 1;
  std::function<void()> at_end_;
  std::function<HRESULT(BSTR* text)> text_;
};

}  // namespace corvelle::testing
