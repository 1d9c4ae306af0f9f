// tests/support/runtime_error.h - checks that a statement ends in a run-time error.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "base/errors.h"

namespace corvelle::testing {

// The error of that kind that `operation` ends with, none when it succeeds.
template <class Error = RuntimeError>
std::optional<Error> error_of(const std::function<void()>& operation) {
  try {
    operation();
  } catch (const Error& error) {
    return error;
  }
  return std::nullopt;
}

}  // namespace corvelle::testing

// EXPECT_RUNTIME_ERROR(statement, number): the statement throws a RuntimeError of that number.
#define EXPECT_RUNTIME_ERROR(statement, expected_number)                                       \
  do {                                                                                         \
    const auto error_of_statement = ::corvelle::testing::error_of([&] { (void)(statement); }); \
    ASSERT_TRUE(error_of_statement.has_value()) << "no error from " #statement;                \
    EXPECT_EQ(error_of_statement->number(), expected_number);                                  \
  } while (false)

// EXPECT_RUNTIME_ERROR_SAYING(statement, number, text): likewise, and its description is exactly `text`.
#define EXPECT_RUNTIME_ERROR_SAYING(statement, expected_number, text)                          \
  do {                                                                                         \
    const auto error_of_statement = ::corvelle::testing::error_of([&] { (void)(statement); }); \
    ASSERT_TRUE(error_of_statement.has_value()) << "no error from " #statement;                \
    EXPECT_EQ(error_of_statement->number(), expected_number);                                  \
    EXPECT_EQ(error_of_statement->description(), text);                                        \
  } while (false)
