#include "text/replacement.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/ansi_code.h"
#include "base/counter.h"
#include "base/errors.h"
#include "base/replaced.h"
#include "base/slice.h"
#include "base/vectors/code_units.h"

namespace corvelle {
namespace {

constexpr std::int32_t kCodeBeforeFirstFiller = 97;
constexpr std::size_t kMostFillers = kCounterMax - kCodeBeforeFirstFiller;
constexpr std::size_t kShortFillers = 0xFF - kCodeBeforeFirstFiller;  // those whose code is one byte

// What each byte stands for behind an ASCII one: behind that, too, a lead byte is alone.
constexpr std::array<char16_t, 256> kDecodedBytes = [] {
  std::array<char16_t, 256> result{};
  for (std::size_t byte = 0; byte < result.size(); ++byte) result[byte] = decoded(static_cast<int>(byte)).units[0];
  return result;
}();

}  // namespace

Result<Text> Replace_Str(std::u16string_view strExpression, std::u16string_view Str1, std::u16string_view Str2) {
  const std::u16string_view text = strExpression;
  if (Error error = too_long(text, {u"Replace_Str", u"strExpression"})) return error;
  if (Str2.size() == 1) {
    const std::size_t last = Str1.size() == 1 ? find_last_unit(text, Str1[0]) : kNowhere;
    Text result = replaced(text, Str2[0], Str1);
    if (last != kNowhere && !result.failed()) result.data()[last] = Str2[0];
    return result;
  }
  const std::size_t found = Str1.size() == 1 ? count_unit(text, Str1[0]) : 0;
  if (found == 0) return Text(text);
  const auto grown_by = static_cast<std::int64_t>(found) * (static_cast<std::int64_t>(Str2.size()) - 1);
  if (Error error = too_long(static_cast<std::int64_t>(text.size()) + grown_by,
                             {u"Replace_Str", u"strExpression with every Str1 replaced by Str2"})) {
    return error;
  }
  return replaced(text, Str1[0], Str2);
}

Result<Text> ConversionStr_Long(std::u16string_view StrTmp) {
  if (StrTmp.size() > kMostFillers) {
    return Error(ErrorNumber::overflow, {u"ConversionStr_Long", u"StrTmp"},
                 {u"has ", decimal_text(static_cast<std::int64_t>(StrTmp.size())),
                  u" characters; there are fillers for ", decimal_text(kMostFillers)});
  }
  const std::size_t short_fillers = std::min(StrTmp.size(), kShortFillers);
  Text result = Text::of_length(3 * StrTmp.size() - short_fillers);
  if (result.failed()) return result;
  char16_t* end = result.data();
  std::size_t code = kCodeBeforeFirstFiller + 1;
  for (const char16_t character : first_of(StrTmp, short_fillers)) {
    *end++ = character;
    *end++ = kDecodedBytes[code++];
  }
  // Behind those, all fillers with the same upper byte at once.
  for (std::u16string_view rest = behind(StrTmp, short_fillers); !rest.empty();) {
    const std::size_t length = std::min(rest.size(), kDecodedBytes.size() - code % kDecodedBytes.size());
    copy_with_pairs(first_of(rest, length), static_cast<char16_t>(code >> 8),
                    &kDecodedBytes[code % kDecodedBytes.size()], end);
    rest.remove_prefix(length);
    code += length;
    end += 3 * length;
  }
  return result;
}

Result<Text> ConversionStr_Short(std::u16string_view StrTmp) {
  if (Error error = too_long(StrTmp, {u"ConversionStr_Short", u"StrTmp"})) return error;
  Text result = Text::of_length((StrTmp.size() + 1) / 2);
  if (result.failed()) return result;
  copy_every_second(StrTmp, result.data());
  return result;
}

}  // namespace corvelle
