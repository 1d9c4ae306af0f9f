#include "datenum/decimal_format.h"
#include "tests/reference/arguments.h"
#include "tests/reference/comparison.h"
#include "tests/reference/decimal_model.h"
#include "tests/reference/number_settings.h"

namespace corvelle::testing {
namespace {

// The second argument is the number of the setting.
auto decimal_arguments(Choices& choices) {
  const auto setting = static_cast<std::int16_t>(choices.below(choices.once_in(2) ? 8 : kSettings));
  return std::tuple(number_text(choices, number_setting(setting)), setting);
}

auto indexed_arguments(Choices& choices) {
  auto [sglData, setting] = decimal_arguments(choices);
  const std::int16_t sglIndex =
      choices.once_in(8) ? any_int16(choices, 8) : static_cast<std::int16_t>(choices.between(1, 8));
  return std::tuple(std::move(sglData), sglIndex, setting);
}

}  // namespace

std::vector<ComparedOperation> decimal_operations() {
  const auto text = [](Choices& choices) { return std::tuple(numeric_text(choices)); };
  return {
      compared("GetDecimalFmt", {}, GetDecimalFmt, reference::GetDecimalFmt, text),
      compared(
          "GetDecimalFmt_4", {},
          [](std::u16string_view sglData, std::int16_t setting) {
            return GetDecimalFmt_4(sglData, for_product(number_setting(setting)));
          },
          [](std::u16string_view sglData, std::int16_t setting) {
            return reference::GetDecimalFmt_4(sglData, number_setting(setting));
          },
          decimal_arguments),
      compared(
          "GetDecimalFmt_8", {},
          [](std::u16string_view sglData, std::int16_t setting) {
            return GetDecimalFmt_8(sglData, for_product(number_setting(setting)));
          },
          [](std::u16string_view sglData, std::int16_t setting) {
            return reference::GetDecimalFmt_8(sglData, number_setting(setting));
          },
          decimal_arguments),
      compared(
          "GetDecimalFmt_Bus", {},
          [](std::u16string_view sglData, std::int16_t sglIndex, std::int16_t setting) {
            return GetDecimalFmt_Bus(sglData, sglIndex, for_product(number_setting(setting)));
          },
          [](std::u16string_view sglData, std::int16_t sglIndex, std::int16_t setting) {
            return reference::GetDecimalFmt_Bus(sglData, sglIndex, number_setting(setting));
          },
          indexed_arguments),
  };
}

}  // namespace corvelle::testing
