#include "tests/reference/comparison.h"

#include <array>
#include <cstdio>

namespace corvelle::testing {

const std::vector<OperationGroup>& operation_groups() {
  static const std::vector<OperationGroup> groups = {
      {"width", width_operations()},  {"classification", classification_operations()},
      {"fields", field_operations()}, {"substrings", substring_operations()},
      {"dates", date_operations()},   {"decimals", decimal_operations()},
  };
  return groups;
}

std::optional<std::string> difference_in(const OperationGroup& group, std::span<const std::uint8_t> bytes) {
  ByteChoices choices(bytes);
  const Comparison comparison = choices.one_of(group.operations).compare(choices);
  if (comparison.difference.empty()) return std::nullopt;
  return comparison.difference;
}

namespace internal {
namespace {

constexpr std::size_t kShownUnits = 500;

template <class... Values>
std::string printed(const char* format, Values... values) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, values...);
  return buffer.data();
}

}  // namespace

bool same(const Outcome& first, const Outcome& second) {
  const auto* first_error = std::get_if<reference::Error>(&first);
  const auto* second_error = std::get_if<reference::Error>(&second);
  if (first_error != nullptr && second_error != nullptr) return first_error->number == second_error->number;
  if (first.index() != second.index()) return false;
  return std::visit(
      [&]<class Value>(const Value& value) {
        if constexpr (std::is_same_v<Value, reference::Error>) {
          return false;
        } else {
          return value == std::get<Value>(second);
        }
      },
      first);
}

std::string shown(std::u16string_view text) {
  std::string result = "\"";
  for (const char16_t unit : text.substr(0, kShownUnits)) {
    const bool plain = unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\';
    result += plain ? std::string(1, static_cast<char>(unit)) : printed("\\x%04X", static_cast<unsigned>(unit));
  }
  result += text.size() > kShownUnits ? "…\"" : "\"";
  return result + printed(" [%u]", static_cast<unsigned>(text.size()));
}

std::string shown(double number) { return printed("%.17g", number); }
std::string shown(std::int32_t number) { return printed("%d", number); }

std::string shown_outcome(const Outcome& outcome) {
  struct Show {
    std::string operator()(const std::u16string& text) const { return shown(text); }
    std::string operator()(std::int16_t number) const { return shown(std::int32_t{number}); }
    std::string operator()(double number) const { return shown(number); }
    std::string operator()(bool truth) const { return truth ? "True" : "False"; }
    std::string operator()(reference::Error error) const { return "error " + shown(std::int32_t{error.number}); }
  };
  return std::visit(Show{}, outcome);
}

}  // namespace internal
}  // namespace corvelle::testing
