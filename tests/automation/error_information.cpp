// The error information of each thread.
#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <atomic>
#include <new>
#include <utility>

namespace {

using Microsoft::WRL::ComPtr;

thread_local ComPtr<IErrorInfo> of_this_thread;

class ErrorInformation final : public ICreateErrorInfo, public IErrorInfo {
 public:
  virtual ~ErrorInformation() {
    SysFreeString(source_);
    SysFreeString(description_);
  }

  HRESULT QueryInterface(REFIID interface_id, void** result) override {
    *result = nullptr;
    if (interface_id == IID_IUnknown || interface_id == IID_ICreateErrorInfo) {
      *result = static_cast<ICreateErrorInfo*>(this);
    } else if (interface_id == IID_IErrorInfo) {
      *result = static_cast<IErrorInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT SetGUID(REFGUID id) override {
    id_ = id;
    return S_OK;
  }
  HRESULT SetSource(LPOLESTR source) override { return replace(source_, source); }
  HRESULT SetDescription(LPOLESTR description) override { return replace(description_, description); }
  HRESULT SetHelpFile(LPOLESTR /*file*/) override { return E_NOTIMPL; }
  HRESULT SetHelpContext(DWORD /*context*/) override { return E_NOTIMPL; }

  HRESULT GetGUID(GUID* id) override {
    *id = id_;
    return S_OK;
  }
  HRESULT GetSource(BSTR* source) override { return give(source_, source); }
  HRESULT GetDescription(BSTR* description) override { return give(description_, description); }
  HRESULT GetHelpFile(BSTR* /*file*/) override { return E_NOTIMPL; }
  HRESULT GetHelpContext(DWORD* /*context*/) override { return E_NOTIMPL; }

 private:
  static HRESULT replace(BSTR& text, LPCOLESTR content) {
    SysFreeString(std::exchange(text, SysAllocString(content)));
    return text != nullptr || content == nullptr ? S_OK : E_OUTOFMEMORY;
  }
  static HRESULT give(BSTR text, BSTR* result) {
    *result = text == nullptr ? nullptr : SysAllocStringLen(text, SysStringLen(text));
    return S_OK;
  }

  std::atomic<ULONG> references_ = 1;
  GUID id_ = {};
  BSTR source_ = nullptr;
  BSTR description_ = nullptr;
};

}  // namespace

HRESULT SetErrorInfo(ULONG /*reserved*/, IErrorInfo* information) {
  of_this_thread = ComPtr<IErrorInfo>(information);
  return S_OK;
}

HRESULT GetErrorInfo(ULONG /*reserved*/, IErrorInfo** information) {
  *information = of_this_thread.Detach();
  return *information != nullptr ? S_OK : S_FALSE;
}

HRESULT CreateErrorInfo(ICreateErrorInfo** result) {
  *result = new (std::nothrow) ErrorInformation;
  return *result != nullptr ? S_OK : E_OUTOFMEMORY;
}
