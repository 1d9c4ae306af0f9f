#include "tests/component/published_call.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "component/error_report.h"

namespace corvelle::testing {
namespace {

constexpr std::size_t kInheritedMembers = 7;
constexpr std::u16string_view kVexAppPrefix = u"ClsVexApp.";

void append_all(const ComPtr<IDispatch>& object, const ClassDescription& description, std::vector<Published>& list) {
  for (std::size_t i = 0; i < description.operations.size(); ++i) {
    list.push_back({object, &description, &description.operations[i], i});
  }
}

}  // namespace

std::vector<Published> PublishedObjects::all() const {
  std::vector<Published> list;
  append_all(validate_, kClsValidateClass, list);
  append_all(vex_app_, kClsVexAppClass, list);
  return list;
}

Published PublishedObjects::find(std::u16string_view name) const {
  const bool of_vex_app = name.starts_with(kVexAppPrefix);
  if (of_vex_app) name.remove_prefix(kVexAppPrefix.size());
  for (const Published& each : all()) {
    const bool same_class = (each.description == &kClsVexAppClass) == of_vex_app;
    if (same_class && each.operation->name == name) return each;
  }
  ADD_FAILURE() << "no operation " << utf8(name);
  return {};
}

bool is_documented(HRESULT result) {
  constexpr HRESULT kDocumented[] = {S_OK,
                                     DISP_E_BADPARAMCOUNT,
                                     DISP_E_EXCEPTION,
                                     DISP_E_MEMBERNOTFOUND,
                                     DISP_E_PARAMNOTFOUND,
                                     DISP_E_PARAMNOTOPTIONAL,
                                     DISP_E_TYPEMISMATCH,
                                     DISP_E_UNKNOWNINTERFACE,
                                     E_INVALIDARG};
  return std::find(std::begin(kDocumented), std::end(kDocumented), result) != std::end(kDocumented);
}

void append(std::span<const Value> values, const Operation& operation, Arguments& arguments) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (operation.parameters()[i].type == VT_DATE) {
      arguments.date(std::get<double>(values[i]));
    } else {
      arguments.value(values[i]);
    }
  }
}

VtableCall::VtableCall(const Published& called, const Arguments& given)
    : called_(called),
      held_(called.operation->parameter_count + std::size_t{1}),
      arguments_(held_.size()),
      types_(held_.size()),
      pointers_(held_.size()) {
  const DISPPARAMS parameters = given.parameters();
  for (std::size_t i = 0; i < called.operation->parameter_count; ++i) {
    store(i, i < parameters.cArgs ? &parameters.rgvarg[parameters.cArgs - 1 - i] : nullptr);
  }
  receive_result();
}

void VtableCall::store(std::size_t place, VARIANT* given) {
  const Parameter& parameter = called_.operation->parameters()[place];
  VARIANT& held = held_[place].get();
  if (given != nullptr && parameter.value_type() == VT_VARIANT) {
    EXPECT_EQ(VariantCopy(&held, given), S_OK);
  } else if (given != nullptr) {
    EXPECT_EQ(VariantChangeType(&held, given, 0, parameter.value_type()), S_OK);
  } else if (parameter.default_value.kind == DefaultValue::Kind::text) {
    V_VT(&held) = VT_BSTR;
    V_BSTR(&held) = SysAllocString(parameter.default_value.text);
  } else {
    V_VT(&held) = VT_I2;
    V_I2(&held) = parameter.default_value.int16;
  }
  arguments_[place] = held;
  if (parameter.by_reference()) {
    V_VT(&arguments_[place]) = parameter.type;
    V_BYREF(&arguments_[place]) = &V_I2(&held);
  }
  types_[place] = parameter.type;
  pointers_[place] = &arguments_[place];
}

void VtableCall::receive_result() {
  const VARTYPE type = called_.operation->result;
  VARIANT& out = arguments_.back();
  V_VT(&out) = static_cast<VARTYPE>(type | VT_BYREF);
  V_BYREF(&out) = type == VT_VARIANT ? static_cast<void*>(held_.back().receive()) : &V_I2(&held_.back().get());
  types_.back() = V_VT(&out);
  pointers_.back() = &out;
}

void VtableCall::pass_null(std::size_t parameter) { V_BYREF(&arguments_[parameter]) = nullptr; }

HRESULT VtableCall::run() {
  const VARTYPE type = called_.operation->result;
  const bool has_result = type != VT_VOID;
  const auto offset = static_cast<ULONG_PTR>((kInheritedMembers + called_.place) * sizeof(void*));
  ScopedVariant returned;
  interface_ = interface_of();
  EXPECT_EQ(DispCallFunc(interface_.Get(), offset, CC_STDCALL, VT_ERROR,
                         static_cast<UINT>(types_.size() - (has_result ? 0 : 1)), types_.data(), pointers_.data(),
                         returned.receive()),
            S_OK);
  const HRESULT status = V_ERROR(&returned.get());
  VARIANT& out = held_.back().get();
  if (has_result && type != VT_VARIANT && SUCCEEDED(status)) V_VT(&out) = type;
  return status;
}

void VtableCall::release_object() {
  called_.object.Reset();
  interface_.Reset();
}

ComPtr<IUnknown> VtableCall::interface_of() const {
  ComPtr<IUnknown> own;
  EXPECT_EQ(
      called_.object->QueryInterface(called_.description->interface_id, reinterpret_cast<void**>(own.GetAddressOf())),
      S_OK);
  return own;
}

}  // namespace corvelle::testing
