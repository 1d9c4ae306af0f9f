// tests/support/operation_case.h - one case table for every runner.
//
// A row names an operation as published, its arguments and what must come of it. The native tests call the plain
// function (run_natively); the component tests send the same rows through both bindings of the real DLL.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "base/errors.h"
#include "base/text.h"
#include "tests/support/floating_point.h"
#include "tests/support/utf8.h"

namespace corvelle::testing {

// An argument or a result: nothing (an empty variant), a text, a 16-bit or 32-bit integer, a double (a date too), a
// boolean.
using Value = std::variant<std::monostate, std::u16string, std::int16_t, std::int32_t, double, bool>;

struct OperationCase {
  const char* reason;             // a sentence: the bug report when the row fails
  std::u16string_view operation;  // "Center" of ClsValidate; operations of ClsVexApp are written "ClsVexApp.Set_Str"
  std::vector<Value> arguments;
  std::variant<Value, ErrorNumber> expected;
};

// Rows read best with these: text(u"中a"), int16(3), error(ErrorNumber::overflow).
inline Value text(std::u16string_view content) { return std::u16string(content); }
inline Value int16(int value) { return static_cast<std::int16_t>(value); }
inline Value int32(std::int64_t value) { return static_cast<std::int32_t>(value); }
inline Value number(double value) { return value; }
inline Value boolean(bool value) { return value; }
inline Value nothing() { return std::monostate{}; }

// `value` for a person to read in a test's output: "中a" [3 characters], 3, True.
inline std::string shown(const Value& value);

// A published operation as a function of values.
using NativeOperation = std::function<Value(std::span<const Value>)>;
using NativeOperations = std::map<std::u16string_view, NativeOperation>;

namespace internal {

template <class Parameter>
decltype(auto) parameter_of(const Value& value) {
  if constexpr (std::is_same_v<Parameter, std::u16string_view>) {
    return std::u16string_view(std::get<std::u16string>(value));
  } else {
    return std::get<Parameter>(value);
  }
}

inline Value value_of(const Text& result) { return std::u16string(result.view()); }
inline Value value_of(std::int16_t result) { return result; }
inline Value value_of(double result) { return result; }
inline Value value_of(bool result) { return result; }

template <class Result, class... Parameters, std::size_t... Index>
Value call(const std::function<Result(Parameters...)>& function, std::span<const Value> arguments,
           std::index_sequence<Index...>) {
  if constexpr (std::is_void_v<Result>) {
    function(parameter_of<Parameters>(arguments[Index])...);
    return std::monostate{};
  } else {
    return value_of(function(parameter_of<Parameters>(arguments[Index])...));
  }
}

template <class Result, class... Parameters>
NativeOperation adapt(std::function<Result(Parameters...)> function) {
  return [function = std::move(function)](std::span<const Value> arguments) {
    return call(function, arguments, std::index_sequence_for<Parameters...>());
  };
}

}  // namespace internal

// A plain function or a captureless lambda as a NativeOperation; the signature says how its arguments are taken.
//   {u"GetByte_Pf", native(&GetByte_Pf)}
template <class Function>
NativeOperation native(Function&& function) {
  return internal::adapt(std::function(std::forward<Function>(function)));
}

inline std::string shown(const Value& value) {
  struct Show {
    std::string operator()(std::monostate) const { return "nothing"; }
    std::string operator()(const std::u16string& text) const {
      std::string result = "\"";  // appended to, since GCC 12 warns of literal + string where nothing is wrong
      return result.append(utf8(text.substr(0, 80))) + "\" [" + std::to_string(text.size()) + " characters]";
    }
    std::string operator()(std::int16_t number) const { return std::to_string(number); }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(double number) const { return std::to_string(number); }
    std::string operator()(bool truth) const { return truth ? "True" : "False"; }
  };
  return std::visit(Show{}, value);
}

// What a row's operation ends in, with floating-point arithmetic as `setting` has it.
inline std::variant<Value, ErrorNumber> native_outcome(const OperationCase& row, const NativeOperation& operation,
                                                       const FloatingPoint& setting) {
  std::variant<Value, ErrorNumber> outcome;
  EXPECT_TRUE(keeps(setting, [&] {
    try {
      outcome = operation(row.arguments);
    } catch (const RuntimeError& error) {
      outcome = error.number();
    }
  }));
  return outcome;
}

inline std::string shown(const std::variant<Value, ErrorNumber>& outcome) {
  if (const auto* value = std::get_if<Value>(&outcome)) return shown(*value);
  return "error " + std::to_string(static_cast<int>(std::get<ErrorNumber>(outcome)));
}

// Runs every row against the plain functions.
//   TEST(Width, NativeCases) { run_natively(width_cases(), {{u"GetByte_Pf", native(&GetByte_Pf)}, …}); }
inline void run_natively(std::span<const OperationCase> cases, const NativeOperations& operations) {
  for (const OperationCase& row : cases) {
    SCOPED_TRACE(utf8(row.operation) + ": " + row.reason);
    const auto operation = operations.find(row.operation);
    ASSERT_NE(operation, operations.end()) << "no such operation in the runner";
    for (const FloatingPoint& setting : {kUsualFloatingPoint, kStrictFloatingPoint}) {
      const auto outcome = native_outcome(row, operation->second, setting);
      EXPECT_TRUE(outcome == row.expected) << "gave " << shown(outcome) << " instead of " << shown(row.expected);
    }
  }
}

}  // namespace corvelle::testing
