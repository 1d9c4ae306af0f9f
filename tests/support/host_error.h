// tests/support/host_error.h - checks that a statement ends in the error of a host object.
#pragma once

#include "tests/support/runtime_error.h"

namespace corvelle::testing {

// The host's error that `operation` ends with, none when it succeeds.
inline std::optional<HostError> host_error_of(const std::function<void()>& operation) {
  return error_of<HostError>(operation);
}

}  // namespace corvelle::testing

// EXPECT_HOST_ERROR(statement, hresult): the statement throws a HostError with that HRESULT.
#define EXPECT_HOST_ERROR(statement, expected_hresult)                                              \
  do {                                                                                              \
    const auto error_of_statement = ::corvelle::testing::host_error_of([&] { (void)(statement); }); \
    ASSERT_TRUE(error_of_statement.has_value()) << "no host error from " #statement;                \
    EXPECT_EQ(error_of_statement->hresult(), expected_hresult);                                     \
  } while (false)
