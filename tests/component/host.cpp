#include "tests/component/host.h"

#include <gtest/gtest.h>

#include "component/identifiers.h"

namespace corvelle::testing {

ComPtr<IDispatch> create(const wchar_t* prog_id) {
  CLSID class_id = {};
  ComPtr<IDispatch> object;
  EXPECT_EQ(CLSIDFromProgID(prog_id, &class_id), S_OK);
  EXPECT_EQ(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                             reinterpret_cast<void**>(object.GetAddressOf())),
            S_OK);
  return object;
}

ComPtr<_ClsValidate> create_validate() {
  ComPtr<_ClsValidate> object;
  if (const auto dispatch = create(L"Corvelle.ClsValidate")) {
    EXPECT_EQ(dispatch->QueryInterface(kClsValidateInterfaceId, reinterpret_cast<void**>(object.GetAddressOf())), S_OK);
  }
  return object;
}

ComPtr<_ClsVexApp> create_vex_app() {
  ComPtr<_ClsVexApp> object;
  if (const auto dispatch = create(L"Corvelle.ClsVexApp")) {
    EXPECT_EQ(dispatch->QueryInterface(kClsVexAppInterfaceId, reinterpret_cast<void**>(object.GetAddressOf())), S_OK);
  }
  return object;
}

ComPtr<IClassFactory> factory_of(REFCLSID class_id) {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                             reinterpret_cast<void**>(factory.GetAddressOf())),
            S_OK);
  return factory;
}

Arguments::~Arguments() {
  for (Entry& entry : entries_) {
    if (entry.owned) VariantClear(&entry.variant);
  }
}

Arguments& Arguments::add(VARIANT variant, bool owned) {
  entries_.push_back({variant, owned, {}});
  return *this;
}

namespace {

VARIANT of_type(VARTYPE type) {
  VARIANT variant;
  VariantInit(&variant);
  V_VT(&variant) = type;
  return variant;
}

}  // namespace

Arguments& Arguments::text(std::u16string_view content) {
  VARIANT variant = of_type(VT_BSTR);
  V_BSTR(&variant) = SysAllocStringLen(as_wide(content.data()), static_cast<UINT>(content.size()));
  return add(variant, true);
}

Arguments& Arguments::int16(SHORT value) {
  VARIANT variant = of_type(VT_I2);
  V_I2(&variant) = value;
  return add(variant, true);
}

Arguments& Arguments::int32(LONG value) {
  VARIANT variant = of_type(VT_I4);
  V_I4(&variant) = value;
  return add(variant, true);
}

Arguments& Arguments::real(double value) {
  VARIANT variant = of_type(VT_R8);
  V_R8(&variant) = value;
  return add(variant, true);
}

Arguments& Arguments::date(double value) {
  VARIANT variant = of_type(VT_DATE);
  V_DATE(&variant) = value;
  return add(variant, true);
}

Arguments& Arguments::boolean(bool value) {
  VARIANT variant = of_type(VT_BOOL);
  V_BOOL(&variant) = value ? VARIANT_TRUE : VARIANT_FALSE;
  return add(variant, true);
}

Arguments& Arguments::null_text() { return add(of_type(VT_BSTR), true); }

Arguments& Arguments::empty() { return add(of_type(VT_EMPTY), true); }

Arguments& Arguments::missing() {
  VARIANT variant = of_type(VT_ERROR);
  V_ERROR(&variant) = DISP_E_PARAMNOTFOUND;
  return add(variant, true);
}

Arguments& Arguments::borrowed(VARIANT value) { return add(value, false); }

Arguments& Arguments::value(const Value& value) {
  struct Append {
    Arguments& list;
    void operator()(std::monostate) const { list.empty(); }
    void operator()(const std::u16string& content) const { list.text(content); }
    void operator()(std::int16_t number) const { list.int16(number); }
    void operator()(std::int32_t number) const { list.int32(number); }
    void operator()(double number) const { list.real(number); }
    void operator()(bool truth) const { list.boolean(truth); }
  };
  std::visit(Append{*this}, value);
  return *this;
}

Arguments& Arguments::at(DISPID place) {
  entries_.back().place = place;
  return *this;
}

// Named arguments stand first, then the positional ones, last to first.
DISPPARAMS Arguments::parameters() const {
  reversed_.clear();
  places_.clear();
  for (const Entry& entry : entries_) {
    if (!entry.place) continue;
    reversed_.push_back(entry.variant);
    places_.push_back(*entry.place);
  }
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
    if (!entry->place) reversed_.push_back(entry->variant);
  }
  return {reversed_.data(), places_.empty() ? nullptr : places_.data(), static_cast<UINT>(reversed_.size()),
          static_cast<UINT>(places_.size())};
}

DISPID dispid_of(IDispatch* object, const wchar_t* name) {
  DISPID dispid = DISPID_UNKNOWN;
  auto* writable = const_cast<wchar_t*>(name);
  object->GetIDsOfNames(IID_NULL, &writable, 1, LOCALE_USER_DEFAULT, &dispid);
  return dispid;
}

Outcome invoke(IDispatch* object, DISPID dispid, const Arguments& arguments, WORD flags) {
  Outcome outcome;
  DISPPARAMS parameters = arguments.parameters();
  EXCEPINFO exception = {};
  outcome.result = object->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, outcome.value.receive(),
                                  &exception, &outcome.wrong_argument);
  outcome.scode = exception.scode;
  outcome.description = std::u16string(text_of(exception.bstrDescription));
  outcome.source = std::u16string(text_of(exception.bstrSource));
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  return outcome;
}

Outcome invoke(IDispatch* object, const wchar_t* name, const Arguments& arguments) {
  return invoke(object, dispid_of(object, name), arguments);
}

std::optional<std::u16string> error_description() {
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, &information) != S_OK) return {};
  BSTR text = nullptr;
  if (FAILED(information->GetDescription(&text))) return std::u16string();
  std::u16string description(text_of(text));
  SysFreeString(text);
  return description;
}

Value value_of(const VARIANT& variant) {
  switch (V_VT(&variant)) {
    case VT_EMPTY: return std::monostate{};
    case VT_BSTR: return std::u16string(text_of(V_BSTR(&variant)));
    case VT_I2: return static_cast<std::int16_t>(V_I2(&variant));
    case VT_I4: return static_cast<std::int32_t>(V_I4(&variant));
    case VT_R8: return V_R8(&variant);
    case VT_BOOL:
      EXPECT_TRUE(V_BOOL(&variant) == VARIANT_TRUE || V_BOOL(&variant) == VARIANT_FALSE);
      return V_BOOL(&variant) != VARIANT_FALSE;
    default: ADD_FAILURE() << "a VARIANT of type " << V_VT(&variant); return std::monostate{};
  }
}

VARIANT object_variant(IDispatch* object) {
  VARIANT variant = of_type(VT_DISPATCH);
  V_DISPATCH(&variant) = object;
  return variant;
}

VARIANT reference_to(SHORT* target) {
  VARIANT variant = of_type(VT_BYREF | VT_I2);
  V_I2REF(&variant) = target;
  return variant;
}

VARIANT reference_to(BSTR* target) {
  VARIANT variant = of_type(VT_BYREF | VT_BSTR);
  V_BSTRREF(&variant) = target;
  return variant;
}

VARIANT reference_to(VARIANT* target) {
  VARIANT variant = of_type(VT_BYREF | VT_VARIANT);
  V_VARIANTREF(&variant) = target;
  return variant;
}

}  // namespace corvelle::testing
