#include "base/counter.h"

namespace corvelle {
namespace {

[[noreturn]] void raise_too_long(std::size_t length, Argument where) {
  raise(ErrorNumber::overflow, where,
        u"has " + decimal_text(static_cast<std::int64_t>(length)) + u" characters; at most " +
            decimal_text(kCounterMax - 1) + u" can be counted");
}

}  // namespace

std::int16_t narrow16(std::int64_t value, Argument where) {
  if (value < -kCounterMax - 1 || value > kCounterMax) {
    raise(ErrorNumber::overflow, where, u"gives " + decimal_text(value) + u", which does not fit in 16 bits");
  }
  return static_cast<std::int16_t>(value);
}

std::int16_t length16(std::u16string_view text, Argument where) {
  if (text.size() > static_cast<std::size_t>(kCounterMax)) raise_too_long(text.size(), where);
  return static_cast<std::int16_t>(text.size());
}

void step_past_end(std::int16_t length, Argument where) {
  if (length == kCounterMax) raise_too_long(static_cast<std::size_t>(length), where);
}

std::u16string_view walkable(std::u16string_view text, Argument where) {
  step_past_end(length16(text, where), where);
  return text;
}

}  // namespace corvelle
