#include "component/dispatch.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <array>
#include <utility>

#include "component/automation.h"
#include "component/boundary.h"

namespace corvelle {
namespace {

using Microsoft::WRL::ComPtr;

constexpr char16_t lower(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

bool same_name(std::u16string_view published, std::u16string_view asked) {
  return published.size() == asked.size() &&
         std::equal(published.begin(), published.end(), asked.begin(),
                    [](char16_t a, char16_t b) { return a == b || lower(a) == lower(b); });
}

const Operation* find_operation(const ClassDescription& description, std::u16string_view name) {
  for (const Operation& row : description.operations) {
    if (same_name(row.name, name)) return &row;
  }
  return nullptr;
}

DISPID find_parameter(const Operation* operation, std::u16string_view name) {
  if (operation == nullptr) return DISPID_UNKNOWN;
  const auto parameters = operation->parameters();
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (same_name(parameters[i].name, name)) return static_cast<DISPID>(i);
  }
  return DISPID_UNKNOWN;
}

// What script hosts pass for an argument that was left out; some of them by reference.
bool is_missing(const VARIANT& argument) {
  switch (V_VT(&argument)) {
    case VT_ERROR: return V_ERROR(&argument) == DISP_E_PARAMNOTFOUND;
    case VT_BYREF | VT_ERROR: return *V_ERRORREF(&argument) == DISP_E_PARAMNOTFOUND;
    default: return false;
  }
}

// Whether automation can make a value of another type of one of this. It makes a text of an error's code, too, which is
// no argument that anybody meant.
bool can_be_converted(VARTYPE type) { return is_automation_type(type) && (type & ~VT_BYREF) != VT_ERROR; }

// Whether taking `argument` as a value of the parameter's type asks an object of the host for it: for the database's
// interface, or for the default property.
bool asks_the_host(const Parameter& parameter, const VARIANT& argument) {
  const int type = V_VT(&argument) & ~VT_BYREF;
  return parameter.type != VT_VARIANT && (type == VT_DISPATCH || type == VT_UNKNOWN);
}

// The arguments of one call, of the declared types and from last to first, which borrow from the caller's variants;
// what had to be converted is owned here.
class Arguments {
 public:
  explicit Arguments(const Operation& operation) : parameters_(operation.parameters()) {}

  // Puts each argument in its parameter's place. Gives S_OK, or automation's own error, with the culprit's index in
  // `*wrong_argument`.
  HRESULT assign_places(const DISPPARAMS& given, const Operation& operation, UINT* wrong_argument);
  // Whether to bind them runs code of the host, which may change or free what the caller gave by reference. Then that
  // has to be owned first, so that it is what it was when the call began. E_OUTOFMEMORY is the one error of that.
  bool ask_the_host() const;
  HRESULT own();
  // Gives each the declared type; ends as assign_places does.
  HRESULT bind(LCID locale, UINT* wrong_argument);
  // The call with these arguments, while this lives.
  DISPPARAMS parameters() { return {bound_.data(), nullptr, static_cast<UINT>(parameters_.size()), 0}; }

 private:
  HRESULT bind_one(std::size_t place, LCID locale);
  HRESULT bind_by_value(std::size_t place, VARIANT& argument, LCID locale);
  HRESULT bind_by_reference(std::size_t place, VARIANT& argument, LCID locale);
  HRESULT bind_database(std::size_t place, const VARIANT& argument);
  HRESULT convert(std::size_t place, VARIANT& argument, LCID locale);
  void use_default(std::size_t place);
  VARIANT& bound_at(std::size_t place) { return bound_[parameters_.size() - 1 - place]; }

  std::span<const Parameter> parameters_;
  std::array<VARIANT*, kMaxParameters> given_ = {};  // null where left out
  std::array<UINT, kMaxParameters> given_index_;     // in the caller's list
  std::array<ScopedVariant, kMaxParameters> owned_;
  std::array<VARIANT, kMaxParameters> bound_;
  std::array<ScopedVariant, kMaxParameters> converted_;  // values that had another type
  ComPtr<IDispatch> database_;                           // no operation takes two
};

// Positional arguments stand last to first behind the named ones.
HRESULT Arguments::assign_places(const DISPPARAMS& given, const Operation& operation, UINT* wrong_argument) {
  if (given.cArgs > parameters_.size()) return DISP_E_BADPARAMCOUNT;
  for (UINT i = 0; i < given.cArgs; ++i) {
    const std::size_t place = i < given.cNamedArgs ? static_cast<std::size_t>(given.rgdispidNamedArgs[i])
                                                   : static_cast<std::size_t>(given.cArgs - 1 - i);
    if (place >= parameters_.size() || given_[place] != nullptr) {
      *wrong_argument = i;
      return DISP_E_PARAMNOTFOUND;
    }
    given_[place] = &given.rgvarg[i];
    given_index_[place] = i;
  }
  return given.cArgs < operation.required_count ? DISP_E_BADPARAMCOUNT : S_OK;
}

bool Arguments::ask_the_host() const {
  for (std::size_t place = 0; place < parameters_.size(); ++place) {
    const VARIANT* argument = followed(given_[place]);
    if (argument != nullptr && asks_the_host(parameters_[place], *argument)) return true;
  }
  return false;
}

// A value is the caller's to keep until the call ends. In place of what cannot be copied stands a value that binding
// refuses.
HRESULT Arguments::own() {
  for (std::size_t place = 0; place < parameters_.size(); ++place) {
    VARIANT* argument = followed(given_[place]);
    if (argument == nullptr || (V_VT(given_[place]) & VT_BYREF) == 0) continue;
    given_[place] = owned_[place].receive();
    const HRESULT copied = is_automation_type(V_VT(argument)) ? VariantCopyInd(given_[place], argument) : E_INVALIDARG;
    if (copied == E_OUTOFMEMORY) return copied;
    if (FAILED(copied)) V_VT(given_[place]) = VT_NULL;
  }
  return S_OK;
}

HRESULT Arguments::bind(LCID locale, UINT* wrong_argument) {
  for (std::size_t place = 0; place < parameters_.size(); ++place) {
    const HRESULT result = bind_one(place, locale);
    if (SUCCEEDED(result)) continue;
    if (given_[place] != nullptr) *wrong_argument = given_index_[place];
    return result;
  }
  return S_OK;
}

HRESULT Arguments::bind_one(std::size_t place, LCID locale) {
  VARIANT* argument = followed(given_[place]);
  if (argument == nullptr && given_[place] != nullptr) return DISP_E_TYPEMISMATCH;
  if (argument == nullptr || is_missing(*argument)) {
    if (!parameters_[place].optional()) return DISP_E_PARAMNOTOPTIONAL;
    use_default(place);
    return S_OK;
  }
  return parameters_[place].by_reference() ? bind_by_reference(place, *argument, locale)
                                           : bind_by_value(place, *argument, locale);
}

void Arguments::use_default(std::size_t place) {
  const Parameter& parameter = parameters_[place];
  const DefaultValue& value = parameter.default_value;
  VARIANT& storage = parameter.by_reference() ? converted_[place].get() : bound_at(place);
  if (value.kind == DefaultValue::Kind::int16) {
    V_I2(&storage) = value.int16;
  } else {
    V_BSTR(&storage) =
        const_cast<BSTR>(value.text);  // the storage is left untyped, so that the constant is never freed
  }
  V_VT(&bound_at(place)) = parameter.type;
  if (parameter.by_reference()) V_BYREF(&bound_at(place)) = &V_NONE(&storage);
}

HRESULT Arguments::bind_by_value(std::size_t place, VARIANT& argument, LCID locale) {
  const VARTYPE type = parameters_[place].type;
  if (type == kDatabaseType) return bind_database(place, argument);
  if (type != VT_VARIANT && V_VT(&argument) != type) {
    if (V_VT(&argument) != (VT_BYREF | VT_BSTR) || type != VT_BSTR) return convert(place, argument, locale);
    V_VT(&bound_at(place)) = type;
    V_BSTR(&bound_at(place)) = *V_BSTRREF(&argument);
    return S_OK;
  }
  bound_at(place) = argument;
  return S_OK;
}

// `argument` as a value of the parameter's type.
HRESULT Arguments::convert(std::size_t place, VARIANT& argument, LCID locale) {
  if (!can_be_converted(V_VT(&argument))) return DISP_E_TYPEMISMATCH;
  VARIANT& value = converted_[place].get();
  const HRESULT result = change_type(&value, &argument, locale, parameters_[place].value_type());
  if (FAILED(result)) return result == E_OUTOFMEMORY ? result : DISP_E_TYPEMISMATCH;
  bound_at(place) = value;
  return S_OK;
}

// The caller's own variable where it has the declared type; otherwise a converted copy, which no operation writes.
HRESULT Arguments::bind_by_reference(std::size_t place, VARIANT& argument, LCID locale) {
  const Parameter& parameter = parameters_[place];
  if (V_VT(&argument) == parameter.type) {
    bound_at(place) = argument;
    return S_OK;
  }
  VARIANT* target = &argument;
  if (V_VT(&argument) != parameter.value_type()) {
    if (const HRESULT result = convert(place, argument, locale); FAILED(result)) return result;
    target = &converted_[place].get();
  }
  V_VT(&bound_at(place)) = parameter.type;
  V_BYREF(&bound_at(place)) = &V_NONE(target);
  return S_OK;
}

// Nothing is a null database, which the operation itself refuses. One by reference is owned by now.
HRESULT Arguments::bind_database(std::size_t place, const VARIANT& argument) {
  if (V_VT(&argument) != VT_DISPATCH && V_VT(&argument) != VT_UNKNOWN) return DISP_E_TYPEMISMATCH;
  if (IUnknown* object = V_UNKNOWN(&argument); object != nullptr) {
    database_ = provided_by<IDispatch>(*object, kDatabaseInterfaceId);
    if (!database_) return DISP_E_TYPEMISMATCH;
  }
  V_VT(&bound_at(place)) = kDatabaseType;
  V_DISPATCH(&bound_at(place)) = database_.Get();
  return S_OK;
}

}  // namespace

HRESULT ids_of_names(const ClassDescription& description, REFIID interface_id, LPOLESTR* names, UINT count,
                     DISPID* ids) {
  if (interface_id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
  if (std::find(names, names + count, nullptr) != names + count) return E_INVALIDARG;
  const Operation* operation = nullptr;
  HRESULT result = S_OK;
  for (UINT i = 0; i < count; ++i) {
    const std::u16string_view name = as_text(names[i]);
    if (i == 0) {
      operation = find_operation(description, name);
      ids[0] = operation != nullptr ? operation->dispid : DISPID_UNKNOWN;
    } else {
      ids[i] = find_parameter(operation, name);
    }
    if (ids[i] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
  }
  return result;
}

HRESULT invoke(const ClassDescription& description, IDispatch* object, DISPID dispid, REFIID interface_id, LCID locale,
               WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument) {
  if (interface_id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (parameters == nullptr || parameters->cNamedArgs > parameters->cArgs) return E_INVALIDARG;
  if (parameters->cArgs > 0 && parameters->rgvarg == nullptr) return E_INVALIDARG;
  if (parameters->cNamedArgs > 0 && parameters->rgdispidNamedArgs == nullptr) return E_INVALIDARG;
  const Operation* operation = find_operation(description, dispid);
  if (operation == nullptr || !is_call(flags)) return DISP_E_MEMBERNOTFOUND;

  UINT unused = 0;
  UINT* wrong = wrong_argument != nullptr ? wrong_argument : &unused;
  const ComPtr<IDispatch> kept(object);  // the host's code may run from here on; let go when all else is
  Arguments arguments(*operation);
  forget_error();
  HRESULT bound = arguments.assign_places(*parameters, *operation, wrong);
  if (SUCCEEDED(bound) && arguments.ask_the_host()) bound = arguments.own();
  if (SUCCEEDED(bound)) bound = arguments.bind(locale, wrong);
  if (FAILED(bound)) return bound;
  ScopedVariant discarded;
  const HRESULT called =
      operation->call(*operation, object, arguments.parameters(), result != nullptr ? result : discarded.receive());
  return FAILED(called) ? report_exception(called, exception) : S_OK;
}

HRESULT report_exception(HRESULT failure, EXCEPINFO* exception) {
  if (exception == nullptr) return DISP_E_EXCEPTION;
  exception->scode = failure;
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, &information) != S_OK) return DISP_E_EXCEPTION;
  if (FAILED(information->GetSource(&exception->bstrSource))) exception->bstrSource = nullptr;
  if (FAILED(information->GetDescription(&exception->bstrDescription))) exception->bstrDescription = nullptr;
  // Callers who find no text show one of their own.
  if (SysStringLen(exception->bstrDescription) == 0) {
    SysFreeString(std::exchange(exception->bstrDescription, nullptr));
  }
  return DISP_E_EXCEPTION;
}

}  // namespace corvelle
