#include "text/classification.h"

#include <algorithm>
#include <cstdint>

#include "base/counter.h"
#include "base/slice.h"
#include "base/vectors/code_units.h"
#include "base/vectors/unit_map.h"

namespace corvelle {
namespace {

// The characters whose upper-case form has the code of a letter or a digit. Asked for all 65,536 characters, the
// platform's upper-casing followed by its code page 936 gives these and no others, in every locale (upper-casing does
// not follow the user's language: 'i' is a letter in Turkish too, 'ı' and 'ſ' never are). Eth, Y with acute and thorn
// are letters because the code page writes them, best it can, as D, Y and T; the raised digits are digits likewise.
// Being constant, the answer is also the same where the C library's upper-casing differs.
constexpr bool is_letter(char16_t character) {
  const char16_t upper = character & 0xFFDF;
  return (upper >= u'A' && upper <= u'Z') || upper == u'Ð' || upper == u'Ý' || upper == u'Þ';
}

constexpr bool is_digit(char16_t character) {
  return (character >= u'0' && character <= u'9') || character == u'¹' || character == u'²' || character == u'³';
}

// Whether all of `text` are `accepted`, decided at the first that is not.
template <class Accepted>
Result<bool> all_characters(std::u16string_view text, Argument where, Accepted accepted) {
  if (Error error = too_long_to_begin(text, where)) return error;
  if (!std::all_of(text.begin(), text.end(), accepted)) return false;
  if (Error error = too_long(text, where)) return error;
  return true;
}

constexpr UnitMap kPlainForms({
    {u"０零", u"0"},
    {u"１一", u"1"},
    {u"２二", u"2"},
    {u"３三", u"3"},
    {u"４四", u"4"},
    {u"５五", u"5"},
    {u"６六", u"6"},
    {u"７七", u"7"},
    {u"８八", u"8"},
    {u"９九", u"9"},
    {u"至到－", u"-"},
    {u",，＼\\/／", u"、"},
    {u"十", u"10"},  // two characters: 十二 gives 102
});

}  // namespace

Result<bool> is_AlphaNum(std::u16string_view CheckString) {
  return all_characters(CheckString, {u"is_AlphaNum", u"CheckString"}, is_letter);
}

Result<bool> Is_HuanZi(std::u16string_view CheckString) {
  Result<bool> all = all_characters(CheckString, {u"Is_HuanZi", u"CheckString"},
                                    [](char16_t character) { return is_letter(character) || is_digit(character); });
  if (all.failed()) return all;
  return !*all;
}

Result<Text> getNum(std::u16string_view NewStr) {
  const std::size_t length = trimmed(NewStr).size();
  if (Error error = too_long(static_cast<std::int64_t>(length), {u"getNum", u"NewStr"})) return error;
  Text result = Text::of_length(length);
  if (result.failed()) return result;
  result.keep_first(copy_range(first_of(NewStr, length), u'0', u'9', result.data()));
  return result;
}

Result<Text> CharChange(std::u16string_view StrChar) {
  if (Error error = too_long(StrChar, {u"CharChange", u"StrChar"})) return error;
  Text result = Text::of_length(mapped_length(StrChar, kPlainForms));
  if (result.failed()) return result;
  copy_mapped(StrChar, kPlainForms, result.data());
  return result;
}

}  // namespace corvelle
