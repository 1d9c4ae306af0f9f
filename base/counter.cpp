#include "base/counter.h"

namespace corvelle::internal {

void raise_unfit(std::int64_t value, Argument where) {
  raise(ErrorNumber::overflow, where, u"gives " + decimal_text(value) + u", which does not fit in 16 bits");
}

void raise_too_long(std::int64_t length, Argument where) {
  raise(ErrorNumber::overflow, where,
        u"has " + decimal_text(length) + u" characters; at most " + decimal_text(kCounterMax - 1) + u" can be counted");
}

}  // namespace corvelle::internal
