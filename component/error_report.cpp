#include "component/error_report.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <new>
#include <string>
#include <utility>

#include "component/automation.h"

namespace corvelle {
namespace {

using Microsoft::WRL::ComPtr;

std::u16string text_member(IErrorInfo* information, HRESULT (STDMETHODCALLTYPE IErrorInfo::*member)(BSTR*)) {
  ScopedBstr text;
  if (FAILED((information->*member)(text.receive()))) text.forget();
  return std::u16string(text.view());
}

// Where no error information can be made, for want of memory, the HRESULT alone has to say it.
HRESULT report(HRESULT result, const ClassDescription& source, const OLECHAR* source_name,
               std::u16string_view description) noexcept {
  // What the host may have left meanwhile goes first: its end may leave something in turn.
  ComPtr<IErrorInfo> left;
  if (GetErrorInfo(0, &left) == S_OK) left.Reset();
  ComPtr<ICreateErrorInfo> information;
  if (FAILED(CreateErrorInfo(&information))) return result;
  information->SetGUID(source.interface_id);
  information->SetSource(const_cast<OLECHAR*>(source_name));
  information->SetDescription(const_cast<OLECHAR*>(as_olechar(description.data())));
  ComPtr<IErrorInfo> error;
  if (SUCCEEDED(information.As(&error))) SetErrorInfo(0, error.Get());
  return result;
}

}  // namespace

HRESULT report_current_exception(const ClassDescription& source) noexcept {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return report(hresult_of(error.number()), source, source.prog_id, error.description());
  } catch (const HostError& error) {
    const OLECHAR* name = error.source().empty() ? source.prog_id : as_olechar(error.source().c_str());
    return report(error.hresult(), source, name, error.description());
  } catch (const std::bad_alloc&) {
    return report(E_OUTOFMEMORY, source, source.prog_id, u"There is not enough memory.");
  } catch (...) {
    return report(E_UNEXPECTED, source, source.prog_id, u"The operation failed in an unforeseen way.");
  }
}

void throw_error(HRESULT failure, std::u16string otherwise) {
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, &information) != S_OK) throw HostError(failure, std::move(otherwise), u"");
  std::u16string description = text_member(information.Get(), &IErrorInfo::GetDescription);
  throw HostError(failure, std::move(description.empty() ? otherwise : description),
                  text_member(information.Get(), &IErrorInfo::GetSource));
}

void throw_if_failed(HRESULT result) {
  if (FAILED(result)) throw_error(result, u"");
}

}  // namespace corvelle
