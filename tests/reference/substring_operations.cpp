#include <algorithm>
#include <array>

#include "tests/reference/arguments.h"
#include "tests/reference/comparison.h"
#include "tests/reference/text_model.h"
#include "text/fields.h"
#include "text/pinyin.h"
#include "text/replacement.h"
#include "text/substrings.h"

namespace corvelle::testing {
namespace {

auto one_marker(Choices& choices) {
  std::u16string Str = any_text(choices);
  std::u16string Flag = separator(choices, Str);
  return std::tuple(std::move(Str), std::move(Flag));
}

auto two_markers(Choices& choices) {
  std::u16string text = any_text(choices);
  std::u16string first = separator(choices, text);
  std::u16string second = choices.once_in(8) ? first : separator(choices, text);
  if (choices.once_in(16)) text = first + second;
  return std::tuple(std::move(text), std::move(first), std::move(second));
}

auto replacement_arguments(Choices& choices) {
  auto [strExpression, Str1, Str2] = two_markers(choices);
  // A long text full of what a long text is put in for takes gigabytes.
  if (strExpression.size() > 300) {
    for (std::u16string* part : {&Str1, &Str2}) part->resize(std::min<std::size_t>(part->size(), 20));
  }
  return std::tuple(std::move(strExpression), std::move(Str1), std::move(Str2));
}

Result<Text> product_GetPath(std::u16string_view PathFile) {
  return GetPath(PathFile, [](std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag) {
    return getStr_Pf(Str, Num, sFlag);
  });
}

// The frame of Get_String_PY is seen through a step that has something to say: pieces of no, one, four or eleven
// characters by `kind`, made of the character that it is given.
std::u16string piece(std::u16string_view character, std::int16_t kind) {
  constexpr std::array<std::size_t, 4> kSizes = {0, 1, 4, 11};
  return std::u16string(kSizes[static_cast<std::size_t>(kind)], character.front());
}

// The code, and behind a bar the characters that the step was called for.
std::u16string model_initials(std::u16string_view strCon, std::int16_t kind) {
  std::u16string calls;
  const std::u16string code = reference::Get_String_PY(strCon, [&](std::u16string_view character) {
    calls += character;
    return piece(character, kind);
  });
  return code + u"|" + calls;
}

Result<std::u16string> product_initials(std::u16string_view strCon, std::int16_t kind) {
  std::u16string calls;
  Result<Text> code = Get_String_PY(strCon, [&](std::u16string_view character) {
    calls += character;
    return Text(piece(character, kind));
  });
  if (code.failed()) return code.take_error();
  return std::u16string(code->view()) + u"|" + calls;
}

Result<Text> product_marked_head(std::u16string_view Str, std::u16string_view Flag) { return Get_Str(Str, Flag); }

}  // namespace

std::vector<ComparedOperation> substring_operations() {
  const auto text = [](Choices& choices) { return std::tuple(any_text(choices)); };
  const auto text_and_kind = [](Choices& choices) {
    std::u16string strCon = any_text(choices);
    return std::tuple(std::move(strCon), static_cast<std::int16_t>(choices.below(4)));
  };
  return {
      compared("GetPath", {6}, product_GetPath, reference::GetPath,
               [](Choices& choices) { return std::tuple(path(choices)); }),
      compared("Get_Str", {6}, product_marked_head, reference::Get_Str, one_marker),
      compared("getString_P", {}, getString_P, reference::getString_P, two_markers),
      compared("Replace_Str", {6}, Replace_Str, reference::Replace_Str, replacement_arguments),
      compared("ConversionStr_Long", {6}, ConversionStr_Long, reference::ConversionStr_Long, text),
      compared("ConversionStr_Short", {6}, ConversionStr_Short, reference::ConversionStr_Short, text),
      compared("Get_String_PY", {6}, product_initials, model_initials, text_and_kind),
  };
}

}  // namespace corvelle::testing
