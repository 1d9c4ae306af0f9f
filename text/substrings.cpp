#include "text/substrings.h"

#include <algorithm>

#include "base/counter.h"
#include "base/slice.h"
#include "base/text_builder.h"
#include "base/vectors/code_units.h"

namespace corvelle {
namespace {

bool stands_at(std::int64_t position, std::u16string_view marker, std::u16string_view text) {
  return substring(text, position, static_cast<std::int64_t>(marker.size())) == marker;
}

// The text behind the `opening` marker at `position`, as getString_P gives it; `next_closing` is where the `closing`
// marker first stands, or 0.
Text text_between(std::u16string_view text, std::int64_t position, std::u16string_view opening,
                  std::int64_t next_closing, std::u16string_view closing) {
  const auto past_end = static_cast<std::int64_t>(text.size()) + 1;
  Text result = Text::of_length(substring(text, position, kCounterMax).size());
  if (result.failed()) return result;
  std::size_t length = 0;
  for (;;) {
    position += static_cast<std::int64_t>(opening.size());
    if (position > kCounterMax) return {};
    if (stands_at(position, closing, text)) break;
    // The character here is taken whatever it begins, and with it all before the next marker.
    const std::int64_t next_opening = position_of(text, opening, position + 1);
    if (next_closing != 0 && next_closing <= position) next_closing = position_of(text, closing, position + 1);
    std::int64_t end = past_end;
    if (next_closing != 0) end = next_closing;
    if (next_opening != 0) end = std::min(end, next_opening);
    if (std::max(end, position + 1) > kCounterMax) return {};
    const std::u16string_view run = substring(text, position, end - position);
    std::copy(run.begin(), run.end(), result.data() + length);
    length += run.size();
    if (end != next_opening) break;
    position = end;
  }
  result.keep_first(length);
  return result;
}

}  // namespace

Result<Text> GetPath(std::u16string_view PathFile, FieldOperation get_field) {
  constexpr std::u16string_view kBackslash = u"\\";
  if (Error error = too_long(static_cast<std::int64_t>(PathFile.size() + kBackslash.size()),
                             {u"GetPath", u"PathFile with a backslash behind it"})) {
    return error;
  }
  const Text fields = joined({{PathFile, kBackslash}});
  if (fields.failed()) return out_of_memory();
  TextBuilder folder(PathFile.size());
  const auto count = static_cast<std::int16_t>(count_unit(PathFile, kBackslash[0]));
  for (std::int16_t number = 1; number <= count; ++number) {
    Result<Text> field = get_field(fields, number, kBackslash);
    if (field.failed()) return field;
    folder.append(*field);
    folder.append(kBackslash);
  }
  return folder.text();
}

Result<Text> Get_Str(std::u16string_view Str, std::u16string_view Flag) {
  if (Error error = too_long(Str, {u"Get_Str", u"Str"})) return error;
  const std::int64_t found = position_of(Str, Flag, 2);
  if (found == 0) return Text();
  return Text(substring(Str, 1, found - 1 + static_cast<std::int64_t>(Flag.size())));
}

// The errors that it catches are overflows of the position alone; none needs to be thrown for that.
Result<Text> getString_P(std::u16string_view NewStr, std::u16string_view Flag1, std::u16string_view Flag2) {
  const bool markers_alone =
      NewStr.size() == Flag1.size() + Flag2.size() && begins_with(NewStr, Flag1) && NewStr.ends_with(Flag2);
  if (trimmed(NewStr).empty() || markers_alone) return Text();
  const std::int64_t opening = position_of(NewStr, Flag1, 1);
  const std::int64_t closing = position_of(NewStr, Flag2, 1);
  if (opening == 0 || (closing != 0 && closing < opening)) return Text();
  return text_between(NewStr, opening, Flag1, closing, Flag2);
}

}  // namespace corvelle
