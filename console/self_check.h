// console/self_check.h - one known case of every operation, on the user's own machine.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/language.h"
#include "console/output.h"

namespace corvelle::console {

// One line of samples/data/selfcheck.txt, which is part of this program.
struct KnownCase {
  std::wstring operation;  // "ClsValidate.Center"
  bool fails = false;
  std::wstring expected;  // the result, or the number of the error
  std::vector<std::wstring> arguments;

  std::wstring class_name() const { return operation.substr(0, operation.find(L'.')); }
  std::wstring member() const { return operation.substr(operation.find(L'.') + 1); }
};

std::vector<KnownCase> known_cases();

// Runs the cases, prints how each ended and a line with both counts; whether all passed.
bool check_known_cases(Language language, const Streams& streams);

}  // namespace corvelle::console
