// tests/support/result.h - what an operation gave, compared and shown in tests.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>

#include "base/result.h"
#include "base/text.h"
#include "tests/support/utf8.h"

namespace corvelle {

// An operation that failed gave no value at all, whatever is expected.
template <class Value, class Expected>
bool operator==(const Result<Value>& result, const Expected& expected) {
  return !result.failed() && *result == expected;
}

// How GoogleTest shows a text, an error, and a result.
inline void PrintTo(const Text& text, std::ostream* stream) { *stream << '"' << testing::utf8(text) << '"'; }
inline void PrintTo(const Error& error, std::ostream* stream) {
  if (!error) {
    *stream << "no error";
  } else {
    *stream << "error " << std::hex << static_cast<std::uint32_t>(error.hresult()) << std::dec << " of \""
            << testing::utf8(error.source()) << "\": " << testing::utf8(error.description());
  }
}
template <class Value>
void PrintTo(const Result<Value>& result, std::ostream* stream) {
  if (result.failed()) {
    *stream << ::testing::PrintToString(result.error());
  } else {
    *stream << ::testing::PrintToString(*result);
  }
}

namespace testing {

// The value of an operation that must not have failed.
template <class Value>
Value value_of(Result<Value> result) {
  EXPECT_FALSE(result.failed()) << ::testing::PrintToString(result);
  return std::move(*result);
}

// The error that an operation ended with, or none.
inline Error error_of(Error error) { return error; }
template <class Value>
Error error_of(Result<Value> result) {
  return result.take_error();
}

// Whether `error` is the system's own of that number.
inline bool is_runtime_error(const Error& error, ErrorNumber number) {
  return error && error.hresult() == hresult_of(number) && error.source().empty();
}

}  // namespace testing
}  // namespace corvelle
