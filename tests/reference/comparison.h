// tests/reference/comparison.h - one operation of the product held against its model, on the same arguments.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

#include "base/result.h"
#include "base/text.h"
#include "tests/reference/choices.h"
#include "tests/reference/steps.h"

namespace corvelle::testing {

// What an operation ended in: a value, or the run-time error of this number.
using Outcome = std::variant<std::u16string, std::int16_t, double, bool, reference::Error>;

// What one comparison found.
struct Comparison {
  int error = 0;           // the number of the error that the model ended in, 0 for none
  std::string difference;  // empty where both agree; else the arguments and both outcomes
};

struct ComparedOperation {
  std::string name;
  std::function<Comparison(Choices&)> compare;  // draws arguments and runs both
  std::vector<int> errors;                      // the error numbers that a long run must have met
};

// How GoogleTest names an operation.
inline void PrintTo(const ComparedOperation& operation, std::ostream* stream) { *stream << operation.name; }

// Operations that belong together; one fuzzer serves one group.
struct OperationGroup {
  std::string name;
  std::vector<ComparedOperation> operations;
};

inline void PrintTo(const OperationGroup& group, std::ostream* stream) { *stream << group.name; }

const std::vector<OperationGroup>& operation_groups();

std::vector<ComparedOperation> width_operations();
std::vector<ComparedOperation> field_operations();
std::vector<ComparedOperation> substring_operations();
std::vector<ComparedOperation> date_operations();
std::vector<ComparedOperation> decimal_operations();
std::vector<ComparedOperation> classification_operations();

// Draws an operation of `group` and its arguments from a fuzzer's bytes; the difference, if there is one.
std::optional<std::string> difference_in(const OperationGroup& group, std::span<const std::uint8_t> bytes);

namespace internal {

bool same(const Outcome& first, const Outcome& second);
std::string shown_outcome(const Outcome& outcome);
std::string shown(std::u16string_view text);
std::string shown(double number);
std::string shown(std::int32_t number);

inline Outcome outcome(const Text& text) { return std::u16string(text.view()); }
template <class Value>
Outcome outcome(Value value) {
  return value;
}

// Of an error that is no run-time error the number is none that a model ends in.
template <class Value>
Outcome outcome(const Result<Value>& result) {
  if (result.failed()) return reference::Error{result.error().hresult() - hresult_of(ErrorNumber{0})};
  return outcome(*result);
}

template <class Operation>
Outcome outcome_of_model(const Operation& operation) {
  try {
    return outcome(operation());
  } catch (const reference::Error& error) {
    return error;
  }
}

template <class... Arguments>
std::string shown_call(const std::string& name, const std::tuple<Arguments...>& arguments) {
  std::string list;
  std::apply([&](const auto&... argument) { ((list += (list.empty() ? "" : ", ") + shown(argument)), ...); },
             arguments);
  return name + "(" + list + ")";
}

}  // namespace internal

// An operation to compare: `generate` draws a tuple of arguments, `product` and `model` take them.
//   compared("Center", {6}, Center, reference::Center, [](Choices& c) { return std::tuple(any_text(c)); })
template <class Product, class Model, class Generate>
ComparedOperation compared(std::string name, std::vector<int> errors, Product product, Model model, Generate generate) {
  const auto compare = [name, product, model, generate](Choices& choices) {
    const auto arguments = generate(choices);
    const Outcome expected = internal::outcome_of_model([&] { return std::apply(model, arguments); });
    const Outcome given = internal::outcome(std::apply(product, arguments));
    Comparison result;
    if (const auto* error = std::get_if<reference::Error>(&expected)) result.error = error->number;
    if (!internal::same(expected, given)) {
      result.difference = internal::shown_call(name, arguments) +
                          "\n  the model:   " + internal::shown_outcome(expected) +
                          "\n  the product: " + internal::shown_outcome(given) + "\n";
    }
    return result;
  };
  return {std::move(name), compare, std::move(errors)};
}

}  // namespace corvelle::testing
