// tests/support/runtime_error.h - checks that an operation ends in a run-time error.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/result.h"

// EXPECT_RUNTIME_ERROR(operation, number): what it gives is the run-time error of that number.
#define EXPECT_RUNTIME_ERROR(operation, expected_number)                                    \
  do {                                                                                      \
    const ::corvelle::Error error_of_operation = ::corvelle::testing::error_of(operation);  \
    EXPECT_TRUE(::corvelle::testing::is_runtime_error(error_of_operation, expected_number)) \
        << #operation " ended with " << ::testing::PrintToString(error_of_operation);       \
  } while (false)

// EXPECT_RUNTIME_ERROR_SAYING(operation, number, text): likewise, and its description is exactly `text`.
#define EXPECT_RUNTIME_ERROR_SAYING(operation, expected_number, text)                       \
  do {                                                                                      \
    const ::corvelle::Error error_of_operation = ::corvelle::testing::error_of(operation);  \
    ASSERT_TRUE(::corvelle::testing::is_runtime_error(error_of_operation, expected_number)) \
        << #operation " ended with " << ::testing::PrintToString(error_of_operation);       \
    EXPECT_EQ(error_of_operation.description(), text);                                      \
  } while (false)

// EXPECT_HOST_ERROR(operation, hresult): what it gives is an error of somebody else's with that HRESULT.
#define EXPECT_HOST_ERROR(operation, expected_hresult)                                     \
  do {                                                                                     \
    const ::corvelle::Error error_of_operation = ::corvelle::testing::error_of(operation); \
    ASSERT_TRUE(error_of_operation) << "no error from " #operation;                        \
    EXPECT_EQ(error_of_operation.hresult(), expected_hresult);                             \
  } while (false)

// EXPECT_OUT_OF_MEMORY(operation): what it gives is that there is not enough memory.
#define EXPECT_OUT_OF_MEMORY(operation)                                                    \
  do {                                                                                     \
    const ::corvelle::Error error_of_operation = ::corvelle::testing::error_of(operation); \
    ASSERT_TRUE(error_of_operation) << "no error from " #operation;                        \
    EXPECT_EQ(error_of_operation.hresult(), static_cast<std::int32_t>(0x8007000E));        \
    EXPECT_EQ(error_of_operation.description(), u"There is not enough memory.");           \
    EXPECT_EQ(error_of_operation.source(), u"");                                           \
  } while (false)
