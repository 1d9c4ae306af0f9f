// component/operation.h - one published operation as a constexpr row.
//
// A row is written once, in operation_table.h. The C++ signature of the interface's member supplies the types; the
// row adds what C++ cannot say: the DISPID, the names, the help text, the defaults, and which short is a boolean and
// which double a date. Dispatch, the type library and the reference are made from the rows.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

struct Database;

namespace corvelle {

inline constexpr std::size_t kMaxParameters = 5;

// The automation type of a parameter for the host's Database interface.
inline constexpr VARTYPE kDatabaseType = VT_DISPATCH;

// A default text in the shape of a BSTR, so that it can be handed to an operation without an allocation.
template <std::size_t Length>
struct BstrConstant {
  constexpr explicit BstrConstant(std::u16string_view content) {
    for (std::size_t i = 0; i < Length; ++i) units[i] = static_cast<OLECHAR>(content.at(i));
  }
  std::uint32_t byte_count = Length * sizeof(OLECHAR);
  OLECHAR units[Length + 1] = {};
};

// What an omitted optional argument stands for.
struct DefaultValue {
  enum class Kind : std::uint8_t { none, int16, text };
  Kind kind = Kind::none;
  SHORT int16 = 0;
  const OLECHAR* text = nullptr;  // the units of a BstrConstant
};

// What a row says of one parameter; the type is filled in from the signature.
struct Parameter {
  std::u16string_view name;
  DefaultValue default_value = {};
  VARTYPE type = VT_EMPTY;  // VT_BYREF is set for an in/out parameter

  constexpr bool optional() const { return default_value.kind != DefaultValue::Kind::none; }
  constexpr bool by_reference() const { return (type & VT_BYREF) != 0; }
  constexpr VARTYPE value_type() const { return static_cast<VARTYPE>(type & ~VT_BYREF); }
};

// Calls the member of `object`'s vtable that `operation` stands for, with `parameters`, and puts what it gives into
// `*result`. Gives what the member gives; a failure leaves `*result` as it is. Of a plain operation, gives kOtherCall
// instead, and calls nothing, unless there is an argument of the declared type for each parameter, and none is named;
// of any other, whoever calls sees to that.
struct Operation;
using Caller = HRESULT (*)(const Operation& operation, IDispatch* object, const DISPPARAMS& parameters,
                           VARIANT* result);
inline constexpr HRESULT kOtherCall = S_FALSE;  // which no member gives

struct Operation {
  DISPID dispid = 0;
  std::u16string_view name;
  std::string_view help;
  std::array<Parameter, kMaxParameters> parameter_storage = {};
  std::uint8_t parameter_count = 0;
  std::uint8_t required_count = 0;  // parameters without a default; they come first
  // Whether arguments of the declared types can be handed over as they are: a reference may lead nowhere, a VARIANT may
  // hold one, and a host's object has to be asked for the interface.
  bool plain = true;
  std::uint8_t vtable_place = 0;  // of the member
  VARTYPE result = VT_VOID;
  Caller call = nullptr;

  constexpr bool gives_number() const { return plain && (result == VT_I2 || result == VT_R8 || result == VT_BOOL); }
  constexpr std::span<const Parameter> parameters() const { return {parameter_storage.data(), parameter_count}; }
};

// A parameter as its member declares it: in(u"vStr").
constexpr Parameter in(std::u16string_view name) { return {.name = name}; }

// A parameter that is a date: the signature's double would not say so.
struct DateParameter : Parameter {};
constexpr DateParameter date(std::u16string_view name) { return {{.name = name}}; }

// An optional parameter: in(u"Flag", 0), in(u"strFmt", kDefaultDateTemplate).
constexpr Parameter in(std::u16string_view name, SHORT default_value) {
  return {.name = name, .default_value = {.kind = DefaultValue::Kind::int16, .int16 = default_value}};
}
template <std::size_t Length>
constexpr Parameter in(std::u16string_view name, const BstrConstant<Length>& default_value) {
  return {.name = name, .default_value = {.kind = DefaultValue::Kind::text, .text = default_value.units}};
}

namespace internal {

// How a C++ type travels in a VARIANT.
template <class Type>
struct AutomationType;
template <>
struct AutomationType<BSTR> {
  static constexpr VARTYPE value = VT_BSTR;
  static BSTR from(const VARIANT& argument) { return V_BSTR(&argument); }
  static void store(BSTR given, VARIANT* result) { V_BSTR(result) = given; }
};
template <>
struct AutomationType<SHORT> {
  static constexpr VARTYPE value = VT_I2;
  static SHORT from(const VARIANT& argument) { return V_I2(&argument); }
  static void store(SHORT given, VARIANT* result) { V_I2(result) = given; }
};
template <>
struct AutomationType<LONG> {
  static constexpr VARTYPE value = VT_I4;
  static LONG from(const VARIANT& argument) { return V_I4(&argument); }
};
template <>
struct AutomationType<double> {
  static constexpr VARTYPE value = VT_R8;
  static double from(const VARIANT& argument) { return V_R8(&argument); }
  static void store(double given, VARIANT* result) { V_R8(result) = given; }
};
template <>
struct AutomationType<BSTR*> {
  static constexpr VARTYPE value = VT_BSTR | VT_BYREF;
  static BSTR* from(const VARIANT& argument) { return V_BSTRREF(&argument); }
};
template <>
struct AutomationType<SHORT*> {
  static constexpr VARTYPE value = VT_I2 | VT_BYREF;
  static SHORT* from(const VARIANT& argument) { return V_I2REF(&argument); }
};
template <>
struct AutomationType<::Database*> {
  static constexpr VARTYPE value = kDatabaseType;
  static ::Database* from(const VARIANT& argument) { return reinterpret_cast<::Database*>(V_DISPATCH(&argument)); }
};
template <>
struct AutomationType<VARIANT> {
  static constexpr VARTYPE value = VT_VARIANT;
  static const VARIANT& from(const VARIANT& argument) { return argument; }
  static void store(const VARIANT& given, VARIANT* result) { *result = given; }
};

constexpr bool is_plain(VARTYPE type) {
  return type == VT_BSTR || type == VT_I2 || type == VT_I4 || type == VT_R8 || type == VT_DATE;
}

// Stops the compilation of a row that is wrong: it is no constant expression.
inline void row_is_wrong(const char* /*why*/) {}

constexpr VARTYPE date_in_place_of(VARTYPE declared) {
  if (declared != VT_R8) row_is_wrong("only a double can be a date");
  return VT_DATE;
}

// The type of the last of `Types`.
template <class... Types>
using Last = typename decltype((std::type_identity<void>{}, ..., std::type_identity<Types>{}))::type;

// The Caller of the members that take `Arguments`, whatever interface they are of: signatures are few, and each has its
// code once. `Result` is the type of what the last of them points to, VT_VOID where none is for a result; `Types` are
// those of the others.
template <class... Arguments>
struct Call {
  template <VARTYPE Result, VARTYPE... Types>
  static HRESULT call(const Operation& operation, IDispatch* object, const DISPPARAMS& parameters, VARIANT* result) {
    constexpr auto indices = std::make_index_sequence<sizeof...(Types)>();
    if constexpr ((is_plain(Types) && ...)) {
      if (!are_of<Types...>(parameters, indices)) return kOtherCall;
    }
    return call_member<Result>(operation, object, parameters.rgvarg, result, indices);
  }

 private:
  using Member = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, Arguments...);
  template <std::size_t Index>
  using Type = AutomationType<std::tuple_element_t<Index, std::tuple<Arguments...>>>;

  // Whether there is an argument of each of `Types` and no other, in their order, which DISPPARAMS turns round.
  template <VARTYPE... Types, std::size_t... Index>
  static bool are_of(const DISPPARAMS& parameters, std::index_sequence<Index...>) {
    constexpr UINT count = sizeof...(Types);
    [[maybe_unused]] const VARIANT* arguments = parameters.rgvarg;
    return parameters.cArgs == count && parameters.cNamedArgs == 0 && (count == 0 || arguments != nullptr) &&
           ((V_VT(&arguments[count - 1 - Index]) == Types) && ...);
  }

  template <VARTYPE Result, std::size_t... Index>
  static HRESULT call_member(const Operation& operation, IDispatch* object, [[maybe_unused]] const VARIANT* arguments,
                             VARIANT* result, std::index_sequence<Index...>) {
    constexpr std::size_t last = sizeof...(Index) - 1;
    // COM defines an interface as a table of functions.
    const auto member = (*reinterpret_cast<Member* const*>(object))[operation.vtable_place];
    if constexpr (Result == VT_VOID) {
      const HRESULT called = member(object, Type<Index>::from(arguments[last - Index])...);
      if (SUCCEEDED(called)) V_VT(result) = VT_EMPTY;
      return called;
    } else {
      std::remove_pointer_t<Last<Arguments...>> given;
      const HRESULT called = member(object, Type<Index>::from(arguments[last - Index])..., &given);
      if (FAILED(called)) return called;
      AutomationType<decltype(given)>::store(given, result);
      if constexpr (Result != VT_VARIANT) V_VT(result) = Result;
      return called;
    }
  }
};

template <class Member>
struct Signature;
template <class Interface, class... Arguments>
struct Signature<HRESULT (STDMETHODCALLTYPE Interface::*)(Arguments...)> {
  using Call = internal::Call<Arguments...>;
  static constexpr std::size_t kCount = sizeof...(Arguments);

  // The automation type of the parameter at `index`, with VT_BYREF for a pointer; a result is one of those.
  static constexpr VARTYPE type_at(std::size_t index) {
    constexpr std::array<VARTYPE, kCount> types = {type_of<Arguments>()...};
    return types[index];
  }

  // The types of the first parameters, which the row has as `Parameters`.
  template <class... Parameters>
  static constexpr std::array<VARTYPE, sizeof...(Parameters)> types_of() {
    std::size_t index = 0;
    return {(std::is_same_v<Parameters, DateParameter> ? date_in_place_of(type_at(index++)) : type_at(index++))...};
  }

  // The type of the result behind `Count` parameters, `Stated` where that is given.
  template <VARTYPE Stated, std::size_t Count>
  static constexpr VARTYPE result_type() {
    if constexpr (Count == kCount) {
      return VT_VOID;
    } else {
      constexpr auto declared = static_cast<VARTYPE>(type_at(Count) & ~VT_BYREF);
      static_assert(Stated == VT_EMPTY || (Stated == VT_BOOL && declared == VT_I2));
      return Stated == VT_EMPTY ? declared : Stated;
    }
  }

 private:
  template <class Type>
  static constexpr VARTYPE type_of() {
    if constexpr (requires { AutomationType<Type>::value; }) {
      return AutomationType<Type>::value;
    } else {
      return static_cast<VARTYPE>(AutomationType<std::remove_pointer_t<Type>>::value | VT_BYREF);
    }
  }
};

}  // namespace internal

// The row of the interface's member `Method`; `Result` is given where the signature cannot tell, VT_BOOL for a
// VARIANT_BOOL.
//   operation<&_ClsValidate::GetByte_Pf>(0x6003001F, u"GetByte_Pf", "Width of a text …", in(u"vStr"), in(u"vInt"))
template <auto Method, VARTYPE Result = VT_EMPTY, class... Parameters>
consteval Operation operation(std::uint32_t dispid, std::u16string_view name, std::string_view help,
                              Parameters... parameters) {
  using Signature = internal::Signature<decltype(Method)>;
  constexpr std::size_t count = sizeof...(Parameters);
  static_assert(Signature::kCount == count || Signature::kCount == count + 1, "the row and the member differ");
  static_assert(count <= kMaxParameters);

  constexpr std::array<VARTYPE, count> types = Signature::template types_of<Parameters...>();
  constexpr VARTYPE result = Signature::template result_type<Result, count>();

  Operation row;
  row.dispid = static_cast<DISPID>(dispid);
  row.name = name;
  row.help = help;
  row.parameter_count = count;
  row.parameter_storage = {parameters...};
  for (std::size_t i = 0; i < count; ++i) {
    Parameter& parameter = row.parameter_storage[i];
    parameter.type = types[i];
    if (!internal::is_plain(parameter.type)) row.plain = false;
    if (parameter.optional()) continue;
    if (row.required_count != i) internal::row_is_wrong("a required parameter stands behind an optional one");
    ++row.required_count;
  }
  row.result = result;
  row.call = [&]<std::size_t... Index>(std::index_sequence<Index...>) -> Caller {
    return &Signature::Call::template call<result, types[Index]...>;
  }(std::make_index_sequence<count>());
  return row;
}

// The rows of all of an interface's own members, which stand in the order of its vtable.
template <class... Rows>
consteval std::array<Operation, sizeof...(Rows)> interface_of(Rows... rows) {
  constexpr std::size_t kInherited = 7;  // the members of IDispatch
  std::array<Operation, sizeof...(Rows)> table = {rows...};
  for (std::size_t i = 0; i < table.size(); ++i) table[i].vtable_place = static_cast<std::uint8_t>(kInherited + i);
  return table;
}

}  // namespace corvelle
