#include "base/counter.h"

namespace corvelle::internal {

Error does_not_fit(std::int64_t value, Argument where) noexcept {
  return Error(ErrorNumber::overflow, where, {u"gives ", decimal_text(value), u", which does not fit in 16 bits"});
}

Error has_too_many(std::int64_t length, Argument where) noexcept {
  return Error(
      ErrorNumber::overflow, where,
      {u"has ", decimal_text(length), u" characters; at most ", decimal_text(kCounterMax - 1), u" can be counted"});
}

}  // namespace corvelle::internal
