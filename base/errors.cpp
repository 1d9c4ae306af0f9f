#include "base/errors.h"

#include <string>

namespace corvelle {
namespace {

constexpr std::size_t kQuotedCharacters = 40;

}  // namespace

const char* RuntimeError::what() const noexcept {
  switch (number_) {
    case ErrorNumber::invalid_argument: return "invalid procedure call or argument";
    case ErrorNumber::overflow: return "overflow";
    case ErrorNumber::type_mismatch: return "type mismatch";
    case ErrorNumber::object_not_set: return "object reference not set";
    case ErrorNumber::object_required: return "object required";
    case ErrorNumber::no_such_member: return "object does not support the property or method";
  }
  return "run-time error";
}

std::u16string sentence(Argument where, std::u16string_view complaint) {
  return std::u16string(where.operation).append(u": ").append(where.name).append(u" ").append(complaint);
}

void raise(ErrorNumber number, Argument where, std::u16string_view complaint) {
  throw RuntimeError(number, sentence(where, complaint));
}

std::u16string decimal_text(std::int64_t value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

std::u16string in_quotes(std::u16string_view value) {
  std::u16string result = u"\"";
  result.append(value.substr(0, kQuotedCharacters));
  if (value.size() > kQuotedCharacters) result.append(u"…");
  return result.append(u"\"");
}

}  // namespace corvelle
