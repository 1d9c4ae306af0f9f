// data/first_error.h - the error of a series of calls that depend on each other.
#pragma once

#include <utility>

#include "base/errors.h"

namespace corvelle {

// A host's object, all of whose members may fail, keeps its first error here and does nothing from then on, so that
// an operation reads as its steps and asks once at their end:
//   grid.set_row(0);
//   grid.set_col(1);
//   if (Error error = grid.errors().take()) return error;
class FirstError {
 public:
  bool any() const noexcept { return static_cast<bool>(error_); }

  // Keeps `error`, unless there is one already.
  void keep(Error&& error) noexcept {
    if (!any()) error_ = std::move(error);
  }

  // Gives the error, or none, to whoever asks; the object works again.
  Error take() noexcept { return std::move(error_); }

  // Lets an error go, and says whether there was one.
  bool forget() noexcept { return static_cast<bool>(take()); }

 private:
  Error error_;
};

}  // namespace corvelle
