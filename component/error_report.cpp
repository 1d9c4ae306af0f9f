#include "component/error_report.h"

#include <oleauto.h>
#include <wrl/client.h>

#include "component/automation.h"

namespace corvelle {
namespace {

using Microsoft::WRL::ComPtr;

ScopedBstr text_member(IErrorInfo& information, HRESULT (STDMETHODCALLTYPE IErrorInfo::*member)(BSTR*)) {
  ScopedBstr text;
  if (FAILED((information.*member)(text.receive()))) text.forget();
  return text;
}

}  // namespace

// Where no error information can be made, for want of memory, the HRESULT alone has to say it.
HRESULT report(const Error& error, const ClassDescription& source) noexcept {
  // What the host may have left meanwhile goes first: its end may leave something in turn.
  ComPtr<IErrorInfo> left;
  if (GetErrorInfo(0, &left) == S_OK) left.Reset();
  ComPtr<ICreateErrorInfo> information;
  if (FAILED(CreateErrorInfo(&information))) return error.hresult();
  information->SetGUID(source.interface_id);
  information->SetSource(
      const_cast<OLECHAR*>(error.source().empty() ? source.prog_id : as_wide(error.source().data())));
  information->SetDescription(const_cast<OLECHAR*>(as_wide(error.description().data())));
  ComPtr<IErrorInfo> made;
  if (SUCCEEDED(information.As(&made))) SetErrorInfo(0, made.Get());
  return error.hresult();
}

Error error_of_call(HRESULT failure) noexcept {
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, &information) != S_OK) return Error(failure, u"", u"");
  const ScopedBstr description = text_member(*information.Get(), &IErrorInfo::GetDescription);
  return Error(failure, description.view(), text_member(*information.Get(), &IErrorInfo::GetSource).view());
}

}  // namespace corvelle
