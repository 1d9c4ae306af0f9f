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

#include "base/text.h"
#include "tests/support/floating_point.h"
#include "tests/support/runtime_error.h"
#include "tests/support/utf8.h"

#ifndef _WIN32
#include "tests/support/failing_memory.h"
#endif

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
using NativeOperation = std::function<Result<Value>(std::span<const Value>)>;
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

inline Result<Value> outcome_of(std::int16_t value) { return Value(value); }
inline Result<Value> outcome_of(Error error) {
  if (error) return error;
  return nothing();
}
template <class Given>
Result<Value> outcome_of(Result<Given> result) {
  if (result.failed()) return result.take_error();
  if constexpr (std::is_same_v<Given, Text>) {
    return text(*result);
  } else {
    return Value(*result);
  }
}

template <class Given, class... Parameters, std::size_t... Index>
Result<Value> call(const std::function<Given(Parameters...)>& function,
                   [[maybe_unused]] std::span<const Value> arguments, std::index_sequence<Index...>) {
  return outcome_of(function(parameter_of<Parameters>(arguments[Index])...));
}

template <class Given, class... Parameters>
NativeOperation adapt(std::function<Given(Parameters...)> function) {
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
inline Result<Value> native_outcome(const OperationCase& row, const NativeOperation& operation,
                                    const FloatingPoint& setting) {
  Result<Value> outcome = nothing();
  EXPECT_TRUE(keeps(setting, [&] { outcome = operation(row.arguments); }));
  return outcome;
}

// Whether an operation ended as its row says.
inline bool is_expected(const Result<Value>& outcome, const OperationCase& row) {
  const auto* number = std::get_if<ErrorNumber>(&row.expected);
  return number != nullptr ? is_runtime_error(outcome.error(), *number) : outcome == std::get<Value>(row.expected);
}

inline std::string shown(const std::variant<Value, ErrorNumber>& outcome) {
  if (const auto* value = std::get_if<Value>(&outcome)) return shown(*value);
  return "error " + std::to_string(static_cast<int>(std::get<ErrorNumber>(outcome)));
}

inline std::string shown(const Result<Value>& outcome) {
  return outcome.failed() ? ::testing::PrintToString(outcome.error()) : shown(*outcome);
}

#ifndef _WIN32
// Every allocation of a row's operation fails in turn: that is what the call ends in, and the next one is as ever.
// Gives how many there are.
inline std::size_t expect_wants_of_memory(const OperationCase& row, const NativeOperation& operation) {
  const auto run = [&] { return operation(row.arguments); };
  return for_each_failure(run, [&](Result<Value> outcome) {
    EXPECT_OUT_OF_MEMORY(std::move(outcome));
    EXPECT_TRUE(is_expected(run(), row)) << "the next call";
  });
}
#endif

// Runs every row against the plain functions, natively without memory, too.
//   TEST(Width, NativeCases) { run_natively(width_cases(), {{u"GetByte_Pf", native(&GetByte_Pf)}, …}); }
inline void run_natively(std::span<const OperationCase> cases, const NativeOperations& operations) {
  [[maybe_unused]] std::size_t allocations = 0;
  for (const OperationCase& row : cases) {
    SCOPED_TRACE(utf8(row.operation) + ": " + row.reason);
    const auto operation = operations.find(row.operation);
    ASSERT_NE(operation, operations.end()) << "no such operation in the runner";
    for (const FloatingPoint& setting : {kUsualFloatingPoint, kStrictFloatingPoint}) {
      const Result<Value> outcome = native_outcome(row, operation->second, setting);
      EXPECT_TRUE(is_expected(outcome, row)) << "gave " << shown(outcome) << " instead of " << shown(row.expected);
    }
#ifndef _WIN32
    allocations += expect_wants_of_memory(row, operation->second);
#endif
  }
#ifndef _WIN32
  EXPECT_GT(allocations, 0u) << "nothing wanted memory";
#endif
}

}  // namespace corvelle::testing
