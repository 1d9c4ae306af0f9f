#include "component/host_object.h"

#include <dispex.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

#include "component/error_report.h"

namespace corvelle {
namespace {

using Microsoft::WRL::ComPtr;

constexpr std::u16string_view kEnumerator = u"_NewEnum";

// What a call that ended in an exception left to say; its texts are the caller's to free.
struct ExceptionInfo : EXCEPINFO {
  explicit ExceptionInfo(const EXCEPINFO& left) : EXCEPINFO(left) {
    if (pfnDeferredFillIn != nullptr) pfnDeferredFillIn(this);
  }
  ~ExceptionInfo() {
    SysFreeString(bstrSource);
    SysFreeString(bstrDescription);
    SysFreeString(bstrHelpFile);
  }
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;

  // The object's own HRESULT: some give one, others a number of 16 bits, which means an error of their runtime.
  HRESULT hresult() const {
    if (FAILED(scode)) return scode;
    return wCode != 0 ? static_cast<HRESULT>(0x800A0000u | wCode) : DISP_E_EXCEPTION;
  }
};

// Whether an object that does not know a name was not even asked. Where its apartment or process is gone, the answer is
// an error of the connection, which has two facilities: OLE's own and the system's, with 300 codes.
bool means_not_asked(HRESULT result) {
  const int code = HRESULT_CODE(result);
  const bool of_connection = HRESULT_FACILITY(result) == FACILITY_WIN32 && code >= RPC_S_INVALID_STRING_BINDING &&
                             code < RPC_S_INVALID_STRING_BINDING + 300;
  return HRESULT_FACILITY(result) == FACILITY_RPC || of_connection || result == E_OUTOFMEMORY;
}

// The id of a member by the other way to ask for one. Script classes have it; those of Wine's VBScript have no other.
HRESULT id_by_extended_dispatch(IDispatch& object, std::u16string_view name, DISPID& id) {
  const auto extended = provided_by<IDispatchEx>(object);
  if (!extended) return E_NOTIMPL;
  const ScopedBstr text(name);
  if (text.is_null()) return E_OUTOFMEMORY;
  return extended->GetDispID(text.get(), fdexNameCaseInsensitive, &id);
}

// Error information that the object may have left is taken, so that a caller who carries on leaves none behind.
Error missing(Argument where, std::u16string_view name) {
  SetErrorInfo(0, nullptr);
  return Error(ErrorNumber::no_such_member, where, {u"has no member ", in_quotes(name)});
}

// `error` of a member, which may have failed without a word.
Error in_words(Error&& error, Argument where, std::u16string_view member) {
  if (!error.description().empty()) return std::move(error);
  return Error(error.hresult(), where, {u"fails at ", in_quotes(member), u" and does not say why"}, error.source());
}

// The error that an object answered a call with; error information of the thread is taken here, too.
Error refusal(HRESULT failure, const EXCEPINFO& left) {
  if (failure != DISP_E_EXCEPTION) return error_of_call(failure);
  const ExceptionInfo exception(left);
  const std::u16string_view description = text_of(exception.bstrDescription);
  const std::u16string_view source = text_of(exception.bstrSource);
  if (description.empty() && source.empty()) return error_of_call(exception.hresult());
  SetErrorInfo(0, nullptr);
  return Error(exception.hresult(), description, source);
}

// What people call a value of this type.
std::u16string_view kind_of(VARTYPE type) {
  switch (type) {
    case VT_EMPTY: return u"no value";
    case VT_NULL: return u"Null";
    case VT_BSTR: return u"a text";
    case VT_DATE: return u"a date";
    case VT_BOOL: return u"a truth value";
    case VT_ERROR: return u"the code of an error";
    case VT_DISPATCH:
    case VT_UNKNOWN: return u"an object";
    default: break;
  }
  if ((type & VT_ARRAY) != 0) return u"an array";
  return is_automation_type(type) && (type & VT_BYREF) == 0 ? u"a number" : u"a value";
}

// The object in `value`, null for Nothing; none where it holds something else.
std::optional<IUnknown*> object_in(const VARIANT& value) {
  const VARIANT* held = followed(const_cast<VARIANT*>(&value));
  if (held == nullptr) return std::nullopt;
  switch (V_VT(held)) {
    case VT_DISPATCH:
    case VT_UNKNOWN: return V_UNKNOWN(held);
    case VT_DISPATCH | VT_BYREF:
    case VT_UNKNOWN | VT_BYREF: return *V_UNKNOWNREF(held);
    default: return std::nullopt;
  }
}

// Copies a host's answer where it only leads to what the host has: that may be gone at the next call. One that leads
// nowhere stays as it is, and is a value of no use.
Error own(ScopedVariant& answer) {
  if ((V_VT(&answer.get()) & VT_BYREF) == 0) return {};
  VARIANT* held = followed(answer.receive());
  if (held == nullptr || !is_automation_type(V_VT(held))) return {};
  ScopedVariant copy;
  const HRESULT copied = VariantCopyInd(copy.receive(), held);
  if (copied == E_OUTOFMEMORY) return out_of_memory();
  if (SUCCEEDED(copied)) std::swap(answer.get(), copy.get());
  return {};
}

}  // namespace

HostObject::HostObject(std::optional<IUnknown*> object, const HostCall& call) : call_(&call) {
  if (!object) {
    complaint_ = ErrorNumber::object_required;
  } else if (*object != nullptr) {
    object_ = provided_by<IDispatch>(**object);
    if (!object_) complaint_ = ErrorNumber::no_such_member;
  }
}

HostObject::HostObject(IUnknown* object, const HostCall& call) : HostObject(std::optional(object), call) {}

// The variable may be the host's own, which its object may change as soon as it is asked for something: one look.
HostObject::HostObject(const VARIANT& value, const HostCall& call) : HostObject(object_in(value), call) {}

Error HostObject::unusable(std::u16string_view member) const {
  switch (complaint_) {
    case ErrorNumber::object_required:
      return Error(complaint_, call_->where, {u"is no object with the member ", in_quotes(member)});
    case ErrorNumber::no_such_member: return missing(call_->where, member);
    default:
      return Error(complaint_, call_->where, {u"is Nothing where the member ", in_quotes(member), u" is wanted"});
  }
}

std::optional<HostObject> HostObject::through(REFIID interface_id) const {
  if (!object_) return is_object() ? std::optional(*this) : std::nullopt;
  const auto provided = provided_by(*object_.Get(), interface_id);
  return provided ? std::optional(HostObject(provided.Get(), *call_)) : std::nullopt;
}

Error HostMember::look_up(IDispatch& object) {
  if (id_) return {};
  constexpr std::size_t kLongestName = 31;
  std::array<OLECHAR, kLongestName + 1> terminated = {};
  std::copy_n(name_.begin(), std::min(name_.size(), kLongestName), terminated.begin());
  OLECHAR* name = terminated.data();
  DISPID found = DISPID_UNKNOWN;
  HRESULT result = object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &found);
  if (result == E_NOTIMPL) result = id_by_extended_dispatch(object, name_, found);
  const Argument where = object_.call().where;
  if (means_not_asked(result)) return in_words(error_of_call(result), where, name_);
  if (FAILED(result) || found == DISPID_UNKNOWN) return missing(where, name_);
  id_ = found;
  return {};
}

Error HostMember::invoke(WORD flags, HostArguments&& arguments, ScopedVariant* result) {
  if (arguments.failed()) return out_of_memory();
  if (object_.get() == nullptr) return object_.unusable(name_);
  IDispatch& object = *object_.get();
  if (Error error = look_up(object)) return error;
  DISPID value_of_put = DISPID_PROPERTYPUT;
  const bool puts = (flags & DISPATCH_PROPERTYPUT) != 0;
  DISPPARAMS parameters = {arguments.last_first(), puts ? &value_of_put : nullptr, arguments.count(), puts ? 1u : 0u};
  EXCEPINFO exception = {};
  UINT wrong_argument = 0;
  const HRESULT answer = object.Invoke(*id_, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                       result != nullptr ? result->receive() : nullptr, &exception, &wrong_argument);
  if (SUCCEEDED(answer)) return {};
  if (result != nullptr) result->forget();
  const Argument where = object_.call().where;
  if (answer == DISP_E_MEMBERNOTFOUND) return missing(where, name_);
  return in_words(refusal(answer, exception), where, name_);
}

void HostMember::use(WORD flags, HostArguments&& arguments, ScopedVariant* result) {
  FirstError& errors = object_.call().errors;
  if (!errors.any()) errors.keep(invoke(flags, std::move(arguments), result));
}

ScopedVariant HostMember::get(HostArguments&& arguments) {
  ScopedVariant result;
  // Both flags, as script hosts send them: an object may have made either of its member.
  use(DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(arguments), &result);
  keep(own(result));
  return result;
}

HostObject HostMember::object(HostArguments&& arguments) {
  const ScopedVariant value = get(std::move(arguments));
  return object_.call().errors.any() ? HostObject(object_.call()) : HostObject(value.get(), object_.call());
}

void HostMember::call(HostArguments&& arguments) { use(DISPATCH_METHOD, std::move(arguments), nullptr); }

void HostMember::put(HostArguments&& indexes_and_value) {
  use(DISPATCH_PROPERTYPUT, std::move(indexes_and_value), nullptr);
}

void HostWalk::begin(const HostObject& collection) {
  enumerator_.Reset();
  const ScopedVariant enumerator = HostMember(collection, kEnumerator, DISPID_NEWENUM).get();
  IUnknown* object = object_in(enumerator.get()).value_or(nullptr);
  if (object != nullptr) enumerator_ = provided_by<IEnumVARIANT>(*object);
  if (!enumerator_ && !call_.errors.any()) call_.errors.keep(missing(call_.where, kEnumerator));
}

bool HostWalk::advance() {
  if (call_.errors.any()) return false;
  item_.clear();
  ULONG fetched = 0;
  const HRESULT result = enumerator_->Next(1, item_.receive(), &fetched);
  if (result == S_OK) return true;
  item_.forget();
  if (FAILED(result)) call_.errors.keep(in_words(error_of_call(result), call_.where, kEnumerator));
  return false;
}

ScopedVariant HostMember::converted(VARTYPE type, std::u16string_view kind) {
  ScopedVariant value = get();
  ScopedVariant result;
  if (object_.call().errors.any()) return result;
  const VARTYPE given = V_VT(&value.get());
  const HRESULT conversion = is_automation_type(given) && (given & VT_BYREF) == 0
                                 ? change_type(result.receive(), &value.get(), LOCALE_USER_DEFAULT, type)
                                 : DISP_E_TYPEMISMATCH;
  if (SUCCEEDED(conversion)) return result;
  result.forget();
  keep(conversion == E_OUTOFMEMORY
           ? out_of_memory()
           : Error(conversion == DISP_E_OVERFLOW ? ErrorNumber::overflow : ErrorNumber::type_mismatch,
                   object_.call().where,
                   {u"answers ", in_quotes(name_), u" with ", kind_of(given), u" that makes no ", kind}));
  return result;
}

Text HostMember::text() {
  const ScopedVariant value = converted(VT_BSTR, u"text");
  Text text(text_of(V_BSTR(&value.get())));
  if (text.failed()) keep(out_of_memory());
  return text;
}

void HostMember::read_number(double& number) {
  const ScopedVariant value = converted(VT_R8, u"number");
  std::memcpy(&number, &V_R8(&value.get()), sizeof number);
}

}  // namespace corvelle
