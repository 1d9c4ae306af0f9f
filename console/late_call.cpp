#include "console/late_call.h"

#include <oleauto.h>

#include <utility>

#include "console/texts.h"

namespace corvelle::console {
namespace {

constexpr LCID kPlain = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

std::wstring text_in(BSTR text) { return {text != nullptr ? text : L"", SysStringLen(text)}; }

std::wstring taken(BSTR text) {
  std::wstring result = text_in(text);
  SysFreeString(text);
  return result;
}

void take_error(EXCEPINFO& exception, Answer& answer) {
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  answer.result = exception.scode != S_OK ? exception.scode : static_cast<HRESULT>(0x800A0000u + exception.wCode);
  answer.source = taken(exception.bstrSource);
  answer.description = taken(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
}

VARIANT reference_to(ScopedVariant& variable) {
  VARIANT reference;
  V_VT(&reference) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&reference) = variable.receive();
  return reference;
}

std::vector<std::wstring> all_shown(const std::vector<ScopedVariant>& variables) {
  std::vector<std::wstring> result;
  for (const ScopedVariant& variable : variables) result.push_back(shown(variable.get()));
  return result;
}

}  // namespace

Answer call(IDispatch* object, const std::wstring& operation, std::vector<ScopedVariant>& arguments) {
  Answer answer;
  auto* name = const_cast<wchar_t*>(operation.c_str());
  DISPID dispid = DISPID_UNKNOWN;
  answer.result = object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &dispid);
  if (FAILED(answer.result)) return answer;

  std::vector<VARIANT> reversed;
  for (auto variable = arguments.rbegin(); variable != arguments.rend(); ++variable) {
    reversed.push_back(reference_to(*variable));
  }
  const std::vector<std::wstring> before = all_shown(arguments);
  DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  EXCEPINFO exception = {};
  UINT wrong_from_end = UINT_MAX;
  answer.result = object->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                 &parameters, answer.value.receive(), &exception, &wrong_from_end);
  if (answer.result == DISP_E_EXCEPTION) {
    answer.ending = Ending::error;
    take_error(exception, answer);
  } else if (SUCCEEDED(answer.result)) {
    answer.ending = Ending::value;
  }
  if (wrong_from_end < arguments.size()) answer.wrong_argument = arguments.size() - 1 - wrong_from_end;
  const std::vector<std::wstring> after = all_shown(arguments);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (after[i] != before[i]) answer.changed.push_back(i);
  }
  return answer;
}

ScopedVariant text_variable(std::wstring_view text) {
  ScopedVariant variable;
  V_BSTR(variable.receive()) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  V_VT(variable.receive()) = VT_BSTR;
  return variable;
}

int number_of(HRESULT result) {
  if (HRESULT_FACILITY(result) == FACILITY_CONTROL) return HRESULT_CODE(result);
  switch (result) {
    case DISP_E_OVERFLOW: return 6;
    case DISP_E_TYPEMISMATCH: return 13;
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND: return 438;
    case DISP_E_BADPARAMCOUNT:
    case DISP_E_PARAMNOTOPTIONAL: return 450;
    default: return 0;
  }
}

std::wstring shown(const VARIANT& value) {
  if (V_VT(&value) == VT_BOOL) return V_BOOL(&value) != VARIANT_FALSE ? L"True" : L"False";
  if (V_VT(&value) == VT_BSTR) return text_in(V_BSTR(&value));
  if ((V_VT(&value) & ~VT_TYPEMASK) != 0) return {};
  ScopedVariant text;
  if (FAILED(VariantChangeTypeEx(text.receive(), const_cast<VARIANT*>(&value), kPlain, 0, VT_BSTR))) return {};
  return text_in(V_BSTR(&text.get()));
}

}  // namespace corvelle::console
