#include "text/fields.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "base/ansi_code.h"
#include "base/counter.h"
#include "base/errors.h"
#include "base/slice.h"
#include "base/vectors/code_units.h"
#include "base/vectors/width_count.h"

namespace corvelle {
namespace {

struct LeadingPart {
  std::size_t length = 0;
  std::int64_t columns = 0;
};

// The shortest leading part of `text` that is at least `columns` wide, all of a narrower text; never none of a text.
LeadingPart leading_part(std::u16string_view text, std::int64_t columns) {
  LeadingPart part;
  for (const std::size_t measured_at_once : {4096U, 512U, 64U}) {
    while (text.size() - part.length >= measured_at_once) {
      const std::size_t two_columns = double_byte_count({text.data() + part.length, measured_at_once});
      const std::int64_t wider = part.columns + static_cast<std::int64_t>(measured_at_once + two_columns);
      if (wider >= columns) break;
      part = {part.length + measured_at_once, wider};
    }
  }
  while (part.length < text.size()) {
    part.columns += is_double_byte(text[part.length++]) ? 2 : 1;
    if (part.columns >= columns) break;
  }
  return part;
}

Text padded(std::u16string_view content, std::int64_t spaces, bool right_aligned) {
  Text result = Text::of_length(content.size() + static_cast<std::size_t>(spaces));
  if (result.failed()) return result;
  const auto before = static_cast<std::size_t>(right_aligned ? spaces : 0);
  std::fill_n(result.data(), before, u' ');
  char16_t* end = std::copy(content.begin(), content.end(), result.data() + before);
  std::fill(end, result.data() + result.size(), u' ');
  return result;
}

// The position of the `n`-th `separator` in `text`, 0 where there are fewer; each is searched for from one character
// after the start of the one before.
std::int64_t position_of_nth(std::u16string_view text, std::u16string_view separator, std::int64_t n) {
  if (separator.size() == 1) {
    const std::size_t found = find_nth_unit(text, separator[0], static_cast<std::size_t>(n));
    return found == kNowhere ? 0 : static_cast<std::int64_t>(found) + 1;
  }
  std::int64_t position = 0;
  do {
    position = position_of(text, separator, position + 1);
  } while (position != 0 && --n > 0);
  return position;
}

// What getStr_Pf gives, nothing where it raises an error. Positions are 64-bit: a text in which a 32-bit one would
// overflow does not fit in a BSTR.
std::optional<std::u16string_view> field_of(std::u16string_view text, std::int16_t number,
                                            std::u16string_view separator) {
  if (number < 1) return std::nullopt;
  const std::int64_t begin = number == 1 ? 0 : position_of_nth(text, separator, number - 1);
  if (number > 1 && begin == 0) return std::nullopt;
  const std::int64_t end = position_of(text, separator, begin + 1);
  if (end == 0) return std::nullopt;
  return substring(text, begin + 1, end - begin - 1);
}

Error no_such_field(std::u16string_view text, std::int16_t number, std::u16string_view separator) {
  std::int64_t fields = 0;
  for (std::int64_t at = position_of(text, separator, 1); at != 0; at = position_of(text, separator, at + 1)) ++fields;
  return Error(ErrorNumber::invalid_argument, {u"getStr_Pf", u"Num"},
               {u"is ", decimal_text(number), u"; Str has ", decimal_text(fields), fields == 1 ? u" field" : u" fields",
                u" ended by ", in_quotes(separator)});
}

}  // namespace

Result<Text> Set_String1(std::u16string_view strName, std::int32_t lngLen, std::int16_t Flag) {
  const std::u16string_view content = trimmed(strName);
  if (content.empty() && lngLen < 0) {
    return Error(ErrorNumber::invalid_argument, {u"Set_String1", u"lngLen"},
                 {u"is ", decimal_text(lngLen), u", and there is no text to cut"});
  }
  const LeadingPart part = leading_part(substring(content, 1, kCounterMax), lngLen);
  if (part.columns >= kCounterMax) {
    return Error(ErrorNumber::overflow, {u"Set_String1", u"strName"},
                 {u"takes ", decimal_text(part.columns), u" columns or more to reach lngLen, ", decimal_text(lngLen),
                  u"; at most ", decimal_text(kCounterMax - 1), u" can be counted"});
  }
  return padded(first_of(content, part.length), std::max<std::int64_t>(lngLen - part.columns, 0), Flag != 0);
}

Result<Text> Get_String(std::u16string_view strName, std::int32_t intBegin, std::int32_t LngEnd) {
  if (static_cast<std::int64_t>(strName.size()) < intBegin) return Text();
  Result<std::int16_t> narrowed = narrow16(intBegin, {u"Get_String", u"intBegin"});
  if (narrowed.failed()) return narrowed.take_error();
  const std::int16_t begin = *narrowed;
  if (begin < 1) {
    return Error(ErrorNumber::invalid_argument, {u"Get_String", u"intBegin"},
                 {u"is ", decimal_text(begin), u"; positions start at 1"});
  }
  const std::u16string_view walked = substring(strName, begin, kCounterMax - begin + 1);
  if (LngEnd == std::numeric_limits<std::int32_t>::min() && is_double_byte(walked[0])) {
    return Error(ErrorNumber::overflow, {u"Get_String", u"LngEnd"},
                 {u"is ", decimal_text(LngEnd), u" and cannot move nearer by a two-column character"});
  }
  const std::int64_t columns = std::int64_t{LngEnd} - begin + 1;
  const LeadingPart part = leading_part(walked, columns);
  // Where the text ends first, each column still missing is a step into nothing.
  const std::int64_t steps = static_cast<std::int64_t>(part.length) + std::max<std::int64_t>(columns - part.columns, 0);
  if (begin + steps > kCounterMax) {
    return Error(ErrorNumber::overflow, {u"Get_String", u"LngEnd"},
                 {u"is ", decimal_text(LngEnd), u"; the walk there from position ", decimal_text(begin),
                  u" passes position ", decimal_text(kCounterMax)});
  }
  return Text(first_of(walked, part.length));
}

Result<Text> getStr_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag) {
  const auto field = field_of(Str, Num, sFlag);
  if (!field) return no_such_field(Str, Num, sFlag);
  return Text(*field);
}

Result<Text> getStrDo_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag) {
  return Text(field_of(Str, Num, sFlag).value_or(sFlag));
}

Result<Text> Center(std::u16string_view Str) {
  if (Error error = too_long(Str, {u"Center", u"Str"})) return error;
  Text result = Text::of_length(Str.size());
  if (result.failed()) return result;
  result.keep_first(copy_without(Str, u' ', result.data()));
  return result;
}

Result<Text> GetStr(std::u16string_view Str, FunctionRef<Result<bool>(std::u16string_view)> is_alpha_num) {
  constexpr Argument kStr{u"GetStr", u"Str"};
  if (Error error = too_long_to_begin(Str, kStr)) return error;
  Text result = Text::of_length(Str.size());
  if (result.failed()) return result;
  std::size_t kept = 0;
  for (const char16_t& character : Str) {
    Result<bool> keeps = is_alpha_num({&character, 1});
    if (keeps.failed()) return keeps.take_error();
    if (*keeps) result.data()[kept++] = character;
  }
  if (Error error = too_long(Str, kStr)) return error;
  result.keep_first(kept);
  return result;
}

}  // namespace corvelle
