#include "tests/reference/arguments.h"
#include "tests/reference/comparison.h"
#include "tests/reference/text_model.h"
#include "text/display_width.h"

namespace corvelle::testing {

std::vector<ComparedOperation> width_operations() {
  const auto text = [](Choices& choices) { return std::tuple(any_text(choices)); };
  const auto text_and_number = [](Choices& choices) {
    std::u16string vStr = any_text(choices);
    const std::int16_t vInt = any_int16(choices, vStr.size());
    return std::tuple(std::move(vStr), vInt);
  };
  return {
      compared("sumByte_Pf", {6}, sumByte_Pf, reference::sumByte_Pf, text),
      compared("GetByte_Pf", {6}, GetByte_Pf, reference::GetByte_Pf, text_and_number),
      compared("Get_StrWidth", {6}, Get_StrWidth, reference::Get_StrWidth, text),
  };
}

}  // namespace corvelle::testing
