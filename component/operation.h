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

// An argument or a result on its way between a VARIANT and a member's parameter; nothing in it is owned.
union Slot {
  BSTR text;
  SHORT int16;
  LONG int32;
  double real;
  ::Database* database;
  VARIANT variant;
  BSTR* text_reference;
  SHORT* int16_reference;
};

// Calls one member of `object`, the interface the row belongs to, with `arguments` in the order of the parameters.
using Caller = HRESULT (*)(IDispatch* object, const Slot* arguments, Slot* result);

struct Operation {
  DISPID dispid = 0;
  std::u16string_view name;
  std::string_view help;
  std::array<Parameter, kMaxParameters> parameter_storage = {};
  std::uint8_t parameter_count = 0;
  std::uint8_t required_count = 0;  // parameters without a default; they come first
  VARTYPE result = VT_VOID;
  Caller call = nullptr;

  constexpr std::span<const Parameter> parameters() const { return {parameter_storage.data(), parameter_count}; }
};

// A parameter as its member declares it: in(u"vStr").
constexpr Parameter in(std::u16string_view name) { return {.name = name}; }

// A parameter that is a date: the signature's double would not say so.
constexpr Parameter date(std::u16string_view name) { return {.name = name, .type = VT_DATE}; }

// An optional parameter: in(u"Flag", 0), in(u"strFmt", kDefaultDateTemplate).
constexpr Parameter in(std::u16string_view name, SHORT default_value) {
  return {.name = name, .default_value = {.kind = DefaultValue::Kind::int16, .int16 = default_value}};
}
template <std::size_t Length>
constexpr Parameter in(std::u16string_view name, const BstrConstant<Length>& default_value) {
  return {.name = name, .default_value = {.kind = DefaultValue::Kind::text, .text = default_value.units}};
}

namespace internal {

template <class Type>
struct AutomationType;
template <>
struct AutomationType<BSTR> {
  static constexpr VARTYPE value = VT_BSTR;
  static BSTR from(const Slot& slot) { return slot.text; }
};
template <>
struct AutomationType<SHORT> {
  static constexpr VARTYPE value = VT_I2;
  static SHORT from(const Slot& slot) { return slot.int16; }
};
template <>
struct AutomationType<LONG> {
  static constexpr VARTYPE value = VT_I4;
  static LONG from(const Slot& slot) { return slot.int32; }
};
template <>
struct AutomationType<double> {
  static constexpr VARTYPE value = VT_R8;
  static double from(const Slot& slot) { return slot.real; }
};
template <>
struct AutomationType<::Database*> {
  static constexpr VARTYPE value = kDatabaseType;
  static ::Database* from(const Slot& slot) { return slot.database; }
};
template <>
struct AutomationType<VARIANT> {
  static constexpr VARTYPE value = VT_VARIANT;
  static VARIANT from(const Slot& slot) { return slot.variant; }
};
template <>
struct AutomationType<BSTR*> {
  static constexpr VARTYPE value = VT_BSTR | VT_BYREF;
  static BSTR* from(const Slot& slot) { return slot.text_reference; }
};
template <>
struct AutomationType<SHORT*> {
  static constexpr VARTYPE value = VT_I2 | VT_BYREF;
  static SHORT* from(const Slot& slot) { return slot.int16_reference; }
};

template <class Type>
struct ResultOf;  // the address within a Slot that a member writes its result to
template <>
struct ResultOf<BSTR*> {
  static BSTR* in(Slot* slot) { return &slot->text; }
};
template <>
struct ResultOf<SHORT*> {
  static SHORT* in(Slot* slot) { return &slot->int16; }
};
template <>
struct ResultOf<double*> {
  static double* in(Slot* slot) { return &slot->real; }
};
template <>
struct ResultOf<VARIANT*> {
  static VARIANT* in(Slot* slot) { return &slot->variant; }
};

// The type of the last of `Types`.
template <class... Types>
using Last = typename decltype((std::type_identity<void>{}, ..., std::type_identity<Types>{}))::type;

template <class Member>
struct Signature;
template <class Interface, class... Arguments>
struct Signature<HRESULT (STDMETHODCALLTYPE Interface::*)(Arguments...)> {
  static constexpr std::size_t kCount = sizeof...(Arguments);

  // The automation type of the parameter at `index`, with VT_BYREF for a pointer; a result is one of those.
  static constexpr VARTYPE type_at(std::size_t index) {
    constexpr std::array<VARTYPE, kCount> types = {type_of<Arguments>()...};
    return types[index];
  }

  template <auto Method, bool HasResult>
  static HRESULT call(IDispatch* object, const Slot* arguments, Slot* result) {
    return call<Method, HasResult>(static_cast<Interface*>(object), arguments, result,
                                   std::make_index_sequence<kCount - (HasResult ? 1 : 0)>());
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

  template <std::size_t Index>
  using ArgumentAt = std::tuple_element_t<Index, std::tuple<Arguments...>>;

  template <auto Method, bool HasResult, std::size_t... Index>
  static HRESULT call(Interface* object, const Slot* arguments, Slot* result, std::index_sequence<Index...>) {
    if constexpr (HasResult) {
      return (object->*Method)(AutomationType<ArgumentAt<Index>>::from(arguments[Index])...,
                               ResultOf<Last<Arguments...>>::in(result));
    } else {
      return (object->*Method)(AutomationType<ArgumentAt<Index>>::from(arguments[Index])...);
    }
  }
};

// Stops the compilation of a row that is wrong: it is no constant expression.
inline void row_is_wrong(const char* /*why*/) {}

}  // namespace internal

// The row of the interface's member `Method`; `Result` is given where the signature cannot tell, VT_BOOL for a
// VARIANT_BOOL.
//   operation<&_ClsValidate::GetByte_Pf>(0x6003001F, u"GetByte_Pf", "Width of a text …", in(u"vStr"), in(u"vInt"))
template <auto Method, VARTYPE Result = VT_EMPTY, class... Parameters>
consteval Operation operation(std::uint32_t dispid, std::u16string_view name, std::string_view help,
                              Parameters... parameters) {
  using Member = internal::Signature<decltype(Method)>;
  constexpr std::size_t count = sizeof...(Parameters);
  constexpr bool has_result = Member::kCount == count + 1;
  static_assert(has_result || Member::kCount == count, "the row and the member differ in their parameters");
  static_assert(count <= kMaxParameters);

  Operation row;
  row.dispid = static_cast<DISPID>(dispid);
  row.name = name;
  row.help = help;
  row.parameter_count = count;
  row.parameter_storage = {parameters...};
  for (std::size_t i = 0; i < count; ++i) {
    Parameter& parameter = row.parameter_storage[i];
    const VARTYPE declared = Member::type_at(i);
    if (parameter.type == VT_DATE ? declared != VT_R8 : parameter.type != VT_EMPTY) internal::row_is_wrong("type");
    if (parameter.type == VT_EMPTY) parameter.type = declared;
    if (parameter.optional()) continue;
    if (row.required_count != i) internal::row_is_wrong("a required parameter stands behind an optional one");
    ++row.required_count;
  }
  if constexpr (has_result) {
    constexpr auto declared = static_cast<VARTYPE>(Member::type_at(count) & ~VT_BYREF);
    static_assert(Result == VT_EMPTY || (Result == VT_BOOL && declared == VT_I2));
    row.result = Result == VT_EMPTY ? declared : Result;
  }
  row.call = &Member::template call<Method, has_result>;
  return row;
}

}  // namespace corvelle
