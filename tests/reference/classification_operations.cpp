#include "tests/reference/arguments.h"
#include "tests/reference/comparison.h"
#include "tests/reference/text_model.h"
#include "text/classification.h"

namespace corvelle::testing {

std::vector<ComparedOperation> classification_operations() {
  const auto text = [](Choices& choices) { return std::tuple(any_text(choices)); };
  return {
      compared("is_AlphaNum", {6}, is_AlphaNum, reference::is_AlphaNum, text),
      compared("Is_HuanZi", {6}, Is_HuanZi, reference::Is_HuanZi, text),
      compared("getNum", {6}, getNum, reference::getNum, text),
      compared("CharChange", {6}, CharChange, reference::CharChange, text),
  };
}

}  // namespace corvelle::testing
