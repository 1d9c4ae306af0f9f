// tests/hosts/host_failure.h - how an object of a host in a test fails.
#pragma once

#include <cstdint>
#include <new>
#include <string>

#include "data/first_error.h"

namespace corvelle::testing {

// What a member of a host's object throws to answer with an error. It never gets into the product: the faces of a
// model catch it, and answer in the way of their interface.
struct HostFailure {
  std::int32_t hresult;
  std::u16string description;
  std::u16string source;
};

// Runs a step of a host behind one of the operations' ports, unless a step has failed there before; keeps its failure,
// and its want of memory.
template <class Step>
void attempt(FirstError& errors, Step step) {
  if (errors.any()) return;
  try {
    step();
  } catch (const HostFailure& failure) {
    errors.keep(Error(failure.hresult, failure.description, failure.source));
  } catch (const std::bad_alloc&) {
    errors.keep(out_of_memory());
  }
}

// Likewise, and gives what the step does; an empty value where it fails.
template <class Step>
auto attempted(FirstError& errors, Step step) {
  decltype(step()) value = {};
  attempt(errors, [&] { value = step(); });
  return value;
}

}  // namespace corvelle::testing
