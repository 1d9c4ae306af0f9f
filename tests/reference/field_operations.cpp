#include <limits>

#include "tests/reference/arguments.h"
#include "tests/reference/comparison.h"
#include "tests/reference/text_model.h"
#include "text/classification.h"
#include "text/fields.h"

namespace corvelle::testing {
namespace {

auto width_arguments(Choices& choices) {
  std::u16string strName = any_text(choices);
  std::int32_t lngLen = any_int32(choices, strName.size());
  // Two thousand million spaces are not worth their memory; an overflow at such a width is.
  const bool overflows = strName.size() >= 32'768 && strName.front() != u' ' && strName.back() != u' ';
  if (lngLen > 1000 && !overflows) lngLen %= choices.once_in(64) ? 100'000 : 1000;
  const std::int16_t Flag = any_int16(choices, 0);
  return std::tuple(std::move(strName), lngLen, Flag);
}

auto range_arguments(Choices& choices) {
  std::u16string strName = any_text(choices);
  const std::int32_t intBegin = any_int32(choices, strName.size());
  std::int32_t LngEnd = any_int32(choices, strName.size());
  // A far end makes both walk to position 32,767, so it is asked for less often than the other numbers.
  if (LngEnd > 1000 && !choices.once_in(8)) LngEnd %= 1000;
  return std::tuple(std::move(strName), intBegin, LngEnd);
}

auto field_arguments(Choices& choices) {
  std::u16string Str = any_text(choices);
  std::u16string sFlag = separator(choices, Str);
  if (!choices.once_in(8) && sFlag.size() < 3) {  // so that there are fields
    for (std::uint32_t left = 1 + choices.below(4); left > 0; --left) {
      Str.insert(choices.below(static_cast<std::uint32_t>(Str.size()) + 1), sFlag);
    }
  }
  const std::int16_t Num =
      choices.once_in(8) ? any_int16(choices, Str.size()) : static_cast<std::int16_t>(choices.between(1, 4));
  return std::tuple(std::move(Str), Num, std::move(sFlag));
}

}  // namespace

std::vector<ComparedOperation> field_operations() {
  const auto text = [](Choices& choices) { return std::tuple(any_text(choices)); };
  const auto product_GetStr = [](std::u16string_view Str) {
    return GetStr(Str, [](std::u16string_view CheckString) { return is_AlphaNum(CheckString); });
  };
  return {
      compared("Set_String1", {5, 6}, Set_String1, reference::Set_String1, width_arguments),
      compared("Get_String", {5, 6}, Get_String, reference::Get_String, range_arguments),
      compared("getStr_Pf", {5}, getStr_Pf, reference::getStr_Pf, field_arguments),
      compared("getStrDo_Pf", {}, getStrDo_Pf, reference::getStrDo_Pf, field_arguments),
      compared("Center", {6}, Center, reference::Center, text),
      compared("GetStr", {6}, product_GetStr, reference::GetStr, text),
  };
}

}  // namespace corvelle::testing
