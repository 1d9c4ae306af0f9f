// Automation's values: cleared, copied, converted.
#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace {

using Microsoft::WRL::ComPtr;

// Where the system would follow a pointer that leads nowhere.
[[noreturn]] void end_the_process(const char* why) {
  std::fprintf(stderr, "automation was handed %s\n", why);
  std::abort();
}

// Owns what it holds until it is handed on.
struct Holder {
  VARIANT value = {};

  Holder() = default;
  ~Holder() { VariantClear(&value); }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

  HRESULT move_to(VARIANT* target) {
    if (const HRESULT cleared = VariantClear(target); FAILED(cleared)) return cleared;
    *target = value;
    value.vt = VT_EMPTY;
    return S_OK;
  }
};

bool is_known(VARTYPE type) {
  const auto value = static_cast<VARTYPE>(type & ~(VT_ARRAY | VT_BYREF));
  if ((type & (VT_VECTOR | VT_RESERVED)) != 0) return false;
  if (type != value) return (value >= VT_I2 && value <= VT_UINT && value != 15) || value == VT_RECORD;
  return (value <= VT_UINT && value != VT_VARIANT && value != 15) || value == VT_RECORD;
}

std::string_view narrow(BSTR text, std::array<char, 64>& buffer) {
  const UINT length = SysStringLen(text);
  if (length == 0 || length > buffer.size()) return {};
  for (UINT i = 0; i < length; ++i) buffer[i] = text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
  return {buffer.data(), length};
}

std::optional<double> number_in(BSTR text) {
  std::array<char, 64> buffer;
  const std::string_view digits = narrow(text, buffer);
  double number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool whole = !digits.empty() && read.ec == std::errc() && read.ptr == digits.data() + digits.size();
  return whole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> number_in(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY: return 0;
    case VT_I1: return value.cVal;
    case VT_UI1: return value.bVal;
    case VT_I2: return value.iVal;
    case VT_BOOL: return value.boolVal;
    case VT_UI2: return value.uiVal;
    case VT_I4:
    case VT_INT: return value.lVal;
    case VT_UI4:
    case VT_UINT: return value.ulVal;
    case VT_I8: return static_cast<double>(value.llVal);
    case VT_R4: return value.fltVal;
    case VT_R8: return value.dblVal;
    case VT_DATE: return value.date;
    case VT_BSTR: return number_in(value.bstrVal);
    default: return {};
  }
}

BSTR text_of_number(double number) {
  std::array<char, 64> digits;
  const int length = std::snprintf(digits.data(), digits.size(), "%.15g", number);
  BSTR text = SysAllocStringLen(nullptr, static_cast<UINT>(length));
  for (int i = 0; text != nullptr && i < length; ++i) text[i] = static_cast<OLECHAR>(digits[static_cast<unsigned>(i)]);
  return text;
}

HRESULT to_text(const VARIANT& value, VARIANT& result) {
  if (value.vt == VT_EMPTY) {
    result.bstrVal = SysAllocStringLen(nullptr, 0);
  } else {
    const auto number = number_in(value);
    if (!number) return DISP_E_TYPEMISMATCH;
    result.bstrVal = text_of_number(*number);
  }
  if (result.bstrVal == nullptr) return E_OUTOFMEMORY;
  result.vt = VT_BSTR;
  return S_OK;
}

HRESULT to_whole(double number, VARTYPE type, VARIANT& result) {
  const double whole = std::nearbyint(number);
  const double most = type == VT_I2 ? 32767 : 2147483647;
  if (!(whole >= -most - 1 && whole <= most)) return DISP_E_OVERFLOW;
  if (type == VT_I2) {
    result.iVal = static_cast<SHORT>(whole);
  } else {
    result.lVal = static_cast<LONG>(whole);
  }
  result.vt = type;
  return S_OK;
}

HRESULT to_number(const VARIANT& value, VARTYPE type, VARIANT& result) {
  const auto number = number_in(value);
  if (!number) return DISP_E_TYPEMISMATCH;
  switch (type) {
    case VT_I2:
    case VT_I4: return to_whole(*number, type, result);
    case VT_BOOL: result.boolVal = *number != 0 ? VARIANT_TRUE : VARIANT_FALSE; break;
    case VT_DATE:
      if (!(std::fabs(*number) < 2958466)) return DISP_E_OVERFLOW;
      [[fallthrough]];
    case VT_R8: result.dblVal = *number; break;
    default: return DISP_E_TYPEMISMATCH;
  }
  result.vt = type;
  return S_OK;
}

// As the system asks: for the value alone, without a place for an exception.
HRESULT value_of_object(IUnknown* object, LCID locale, VARTYPE type, VARIANT& result) {
  ComPtr<IDispatch> dispatch;
  if (object == nullptr || FAILED(object->QueryInterface(IID_PPV_ARGS(&dispatch))) || !dispatch) {
    return DISP_E_TYPEMISMATCH;
  }
  Holder held;
  DISPPARAMS none = {};
  const HRESULT asked =
      dispatch->Invoke(DISPID_VALUE, IID_NULL, locale, DISPATCH_PROPERTYGET, &none, &held.value, nullptr, nullptr);
  return FAILED(asked) ? asked : VariantChangeTypeEx(&result, &held.value, locale, 0, type);
}

HRESULT converted(const VARIANT& value, LCID locale, VARTYPE type, VARIANT& result) {
  if (value.vt == type) return VariantCopy(&result, &value);
  if (value.vt == VT_DISPATCH && type == VT_UNKNOWN) {
    if (value.punkVal != nullptr) value.punkVal->AddRef();
    result = value;
    result.vt = type;
    return S_OK;
  }
  if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) return value_of_object(value.punkVal, locale, type, result);
  return type == VT_BSTR ? to_text(value, result) : to_number(value, type, result);
}

// A copy of what stands behind a reference to something else than a VARIANT.
HRESULT copy_referred(const VARIANT& reference, VARIANT* target) {
  VARIANT value = {};
  value.vt = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  switch (value.vt) {
    case VT_I1:
    case VT_UI1: value.bVal = *static_cast<BYTE*>(reference.byref); break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL: value.iVal = *reference.piVal; break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
    case VT_R4: value.lVal = *static_cast<LONG*>(reference.byref); break;
    default:  // numbers of eight bytes, and pointers
      value.llVal = *static_cast<LONGLONG*>(reference.byref);
  }
  return VariantCopy(target, &value);
}

}  // namespace

void VariantInit(VARIANTARG* variant) { variant->vt = VT_EMPTY; }

HRESULT VariantClear(VARIANTARG* variant) {
  const VARTYPE type = variant->vt;
  if (!is_known(type)) return DISP_E_BADVARTYPE;
  variant->vt = VT_EMPTY;
  if ((type & VT_BYREF) != 0) return S_OK;
  if ((type & VT_ARRAY) != 0) return SafeArrayDestroy(variant->parray);
  switch (type) {
    case VT_BSTR: SysFreeString(variant->bstrVal); break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      if (variant->punkVal != nullptr) variant->punkVal->Release();
      break;
    case VT_RECORD:
      if (variant->pRecInfo != nullptr || variant->pvRecord != nullptr) end_the_process("a record that nobody made");
      break;
    default: break;
  }
  return S_OK;
}

HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source) {
  if (!is_known(source->vt)) return DISP_E_BADVARTYPE;
  VARIANT copy = *source;
  if ((copy.vt & VT_BYREF) == 0) {
    if (copy.vt == VT_RECORD) return E_INVALIDARG;
    if ((copy.vt & VT_ARRAY) != 0 && copy.parray != nullptr) {
      const SAFEARRAYBOUND& bound = source->parray->rgsabound[0];
      copy.parray = SafeArrayCreateVector(copy.vt, bound.lLbound, bound.cElements);
      std::memcpy(copy.parray->pvData, source->parray->pvData, std::size_t{bound.cElements} * copy.parray->cbElements);
    }
    if (copy.vt == VT_BSTR && copy.bstrVal != nullptr) {
      copy.bstrVal = SysAllocStringByteLen(reinterpret_cast<const char*>(copy.bstrVal), SysStringByteLen(copy.bstrVal));
      if (copy.bstrVal == nullptr) return E_OUTOFMEMORY;
    }
    if ((copy.vt == VT_DISPATCH || copy.vt == VT_UNKNOWN) && copy.punkVal != nullptr) copy.punkVal->AddRef();
  }
  Holder held;
  held.value = copy;
  return held.move_to(target);
}

HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source) {
  if ((source->vt & VT_BYREF) == 0) return VariantCopy(target, source);
  if (source->byref == nullptr) end_the_process("a reference to nothing");
  if (source->vt != (VT_BYREF | VT_VARIANT)) {
    return is_known(source->vt) ? copy_referred(*source, target) : DISP_E_BADVARTYPE;
  }
  const VARIANT* referred = source->pvarVal;
  if (referred->vt == (VT_BYREF | VT_VARIANT)) return E_INVALIDARG;
  return (referred->vt & VT_BYREF) != 0 ? VariantCopyInd(target, referred) : VariantCopy(target, referred);
}

HRESULT VariantChangeTypeEx(VARIANTARG* target, const VARIANTARG* source, LCID locale, USHORT /*flags*/, VARTYPE type) {
  if (!is_known(source->vt) || !is_known(type)) return DISP_E_BADVARTYPE;
  Holder behind;
  if ((source->vt & VT_BYREF) != 0) {
    if (const HRESULT copied = VariantCopyInd(&behind.value, source); FAILED(copied)) return copied;
    source = &behind.value;
  }
  Holder result;
  const HRESULT changed = converted(*source, locale, type, result.value);
  return FAILED(changed) ? changed : result.move_to(target);
}

HRESULT VariantChangeType(VARIANTARG* target, const VARIANTARG* source, USHORT flags, VARTYPE type) {
  return VariantChangeTypeEx(target, source, LOCALE_USER_DEFAULT, flags, type);
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE /*type*/, LONG first, ULONG count) {
  auto* array = static_cast<SAFEARRAY*>(std::calloc(1, sizeof(SAFEARRAY)));
  array->cDims = 1;
  array->cbElements = sizeof(LONGLONG);
  array->pvData = std::calloc(count, sizeof(LONGLONG));
  array->rgsabound[0] = {count, first};
  return array;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  if (array == nullptr) return S_OK;
  std::free(array->pvData);
  std::free(array);
  return S_OK;
}
