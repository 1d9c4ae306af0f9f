#include "console/known_grid.h"

#include <oleauto.h>

#include <algorithm>
#include <iterator>

#include "console/late_call.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

constexpr LONG kColumns = 3;
constexpr const wchar_t* kMembers[] = {L"Cols",          L"Rows",         L"Row",       L"Col",
                                       L"CellAlignment", L"ColAlignment", L"TextMatrix"};
constexpr DISPID kCols = 0;

}  // namespace

STDMETHODIMP KnownGrid::QueryInterface(REFIID interface_id, void** result) {
  *result = interface_id == IID_IUnknown || interface_id == IID_IDispatch ? this : nullptr;
  if (*result == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) KnownGrid::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP KnownGrid::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

STDMETHODIMP KnownGrid::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** result) {
  *result = nullptr;
  return DISP_E_BADINDEX;
}

STDMETHODIMP KnownGrid::GetIDsOfNames(REFIID /*interface_id*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                      DISPID* ids) {
  const auto* found = std::find_if(std::begin(kMembers), std::end(kMembers),
                                   [&](const wchar_t* member) { return same_name(member, names[0]); });
  ids[0] = found == std::end(kMembers) ? DISPID_UNKNOWN : static_cast<DISPID>(found - std::begin(kMembers));
  return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

// The arguments stand last first, and the value of an assignment behind all others.
STDMETHODIMP KnownGrid::Invoke(DISPID id, REFIID /*interface_id*/, LCID /*locale*/, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* /*exception*/, UINT* /*wrong_argument*/) {
  if (id < 0 || static_cast<std::size_t>(id) >= std::size(kMembers)) return DISP_E_MEMBERNOTFOUND;
  if ((flags & DISPATCH_PROPERTYPUT) != 0 && id != kCols && parameters->cArgs > 0) {
    if (!notes_.empty()) notes_ += L' ';
    notes_ += kMembers[id];
    for (UINT i = parameters->cArgs; --i > 0;) {
      notes_ += (i + 1 == parameters->cArgs ? L"(" : L",") + shown(parameters->rgvarg[i]);
      if (i == 1) notes_ += L")";
    }
    notes_ += L"=" + shown(parameters->rgvarg[0]);
    return S_OK;
  }
  if ((flags & DISPATCH_PROPERTYGET) == 0 || id != kCols || result == nullptr) return DISP_E_MEMBERNOTFOUND;
  V_VT(result) = VT_I4;
  V_I4(result) = kColumns;
  return S_OK;
}

}  // namespace corvelle::console
