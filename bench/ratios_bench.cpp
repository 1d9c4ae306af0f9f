// Every comparison that needs no COM, for this machine and for both Windows targets: one line each, for scripts/bench.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "base/vectors/code_units.h"
#include "base/vectors/processor.h"
#include "base/vectors/width_count.h"
#include "bench/peers.h"
#include "bench/ratio_table.h"
#include "bench/short_texts.h"
#include "bench/texts.h"
#include "datenum/date_text.h"
#include "datenum/decimal_format.h"
#include "text/classification.h"
#include "text/display_width.h"
#include "text/fields.h"
#include "text/pinyin.h"
#include "text/replacement.h"
#include "text/substrings.h"
#include "text/text_slot.h"

namespace corvelle::bench {
namespace {

// A call of `operation` with a text that the compiler knows nothing of.
template <class Operation>
auto on(const std::u16string& text, Operation operation) {
  return [&text, operation] {
    std::u16string_view view = text;
    keep(view);
    keep(operation(view));
  };
}

Result<std::int16_t> width16(std::u16string_view text) { return GetByte_Pf(text, 0); }

void compare_widths(const Kind& kind) {
  const std::u16string text = text_of(kind, kLongest);
  const std::string row = std::string("width of ") + kind.name;
  const auto compare = [&](const char* name, auto operation) {
    print_ratio(row.c_str(), name, "plain read", on(text, operation), on(text, plain_read));
  };
  compare("sumByte_Pf", sumByte_Pf);
  if (!GetByte_Pf(text, 0).failed()) {  // elsewhere these two end in an overflow
    compare("GetByte_Pf", width16);
    compare("Get_StrWidth", Get_StrWidth);
  }
  if (has_avx2()) {
    print_ratio((row + ", 16-byte vectors").c_str(), "double-byte count", "plain read",
                on(text, corvelle::internal::double_byte_count_sse2), on(text, plain_read));
  }
}

template <class Field>
auto path_by(Field field) {
  return [field](std::u16string_view path) {
    return GetPath(path, [&](std::u16string_view text, std::int16_t number, std::u16string_view separator) {
      return field(text, number, separator);
    });
  };
}

void compare_searches() {
  const std::u16string fields = repeated(u"ab,", kLongest);
  print_ratio("getStr_Pf field 10,000", "getStr_Pf", "plain loop",
              on(fields, [](std::u16string_view text) { return getStr_Pf(text, 10000, u","); }),
              on(fields, [](std::u16string_view text) { return plain_field(text, 10000, u","); }));
  const std::u16string path = repeated(u"\\", 32000);
  print_ratio("GetPath of 32,000 backslashes", "GetPath", "plain loop", on(path, path_by(getStr_Pf)),
              on(path, path_by(plain_field)));
}

constexpr std::u16string_view kDigits = u"3141592653589793238462643383279";

Result<Text> longest_width(std::u16string_view text) { return Set_String1(text, 32766, 0); }
Result<Text> longest_range(std::u16string_view text) { return Get_String(text, 1, 32766); }
Result<Text> letters(std::u16string_view text) {
  return GetStr(text, [](std::u16string_view character) { return is_AlphaNum(character); });
}
Result<Text> initials(std::u16string_view text) {
  return Get_String_PY(text, [](std::u16string_view character) { return Get_Char_PY(character); });
}
Result<Text> slashes(std::u16string_view text) { return Replace_Str(text, u"-", u"/"); }
Result<Text> up_to_bracket(std::u16string_view text) { return Get_Str(text, u"]"); }
Result<Text> in_brackets(std::u16string_view text) { return getString_P(text, u"[", u"]"); }
Result<Text> decimals(std::u16string_view text) { return GetDecimalFmt_4(text); }

std::u16string in_marks(std::u16string text) {
  text.front() = u'[';
  text.back() = u']';
  return text;
}

void time_short_texts() {
  const auto before = short_texts::corvelle_by_unit::operations();
  const auto now = short_texts::corvelle_now::operations();
  for (const std::size_t length : {1U, 8U, 40U}) {
    for (std::size_t i = 0; i < now.size(); ++i) {
      const std::u16string text = repeated(now[i].sample, length);
      if (length == 1 && now[i].needs_more) continue;
      const Times times = side_by_side([&] { now[i].call(text); }, [&] { before[i].call(text); });
      print_time("short", now[i].name, length, times.subject / short_texts::kCalls);
      print_time("before", now[i].name, length, times.peer / short_texts::kCalls);
    }
    const auto show = [length](const char* name, std::u16string_view sample, auto operation) {
      print_time("short", name, length, nanoseconds(on(repeated(sample, length), operation)));
    };
    show("is_AlphaNum", u"abcXYZ", is_AlphaNum);
    show("ConversionStr_Short", kWords, ConversionStr_Short);
    show("GetDecimalFmt_4", u"3141592653589793238462643383279502884197.5", decimals);
    show("a copy", kWords, [](std::u16string_view given) { return Text(given); });
  }
}

// Every operation that is given a text of any length.
void time_growth(std::size_t length) {
  const auto time = [length](const char* name, const std::u16string& text, auto operation) {
    print_time("growth", name, length, nanoseconds(on(text, operation)));
  };
  const auto show = [&](const char* name, std::u16string_view sample, auto operation) {
    time(name, repeated(sample, length), operation);
  };
  const auto to_the_end = [length](std::u16string_view text) {
    return Set_String1(text, static_cast<std::int32_t>(length), 0);
  };
  const auto last_field = [length](std::u16string_view text) {
    return getStr_Pf(text, static_cast<std::int16_t>(length / 3), u",");
  };
  const auto field_behind_last = [length](std::u16string_view text) {
    return getStrDo_Pf(text, static_cast<std::int16_t>(length / 3 + 2), u",");
  };
  for (const Kind& kind : kKinds) {
    time((std::string("sumByte_Pf, ") + kind.name).c_str(), text_of(kind, length), sumByte_Pf);
  }
  show("GetByte_Pf", kWords, width16);
  show("Get_StrWidth", kWords, Get_StrWidth);
  show("is_AlphaNum", u"abcXYZ", is_AlphaNum);
  show("Is_HuanZi", u"abc123", Is_HuanZi);
  show("Center", kGoods, Center);
  show("GetStr", kWords, letters);
  show("getNum", kWords, getNum);
  show("CharChange", kGoods, CharChange);
  show("Replace_Str", kDates, slashes);
  show("ConversionStr_Long", kWords, ConversionStr_Long);
  show("ConversionStr_Short", kWords, ConversionStr_Short);
  show("Set_String1", kWords, to_the_end);
  show("Get_String", kWords, longest_range);
  time("Get_Str", in_marks(repeated(kWords, length)), up_to_bracket);
  time("getString_P", in_marks(repeated(kWords, length)), in_brackets);
  show("getStr_Pf, last field", u"ab,", last_field);
  show("getStrDo_Pf, the field behind the last", u"ab,", field_behind_last);
  show("GetPath, backslashes alone", u"\\", path_by(getStr_Pf));
  show("Get_String_PY", kGoods, initials);
  show("Set_Str and Get_Str of the slot", kWords, [](std::u16string_view text) -> Result<Text> {
    if (Error error = Set_Str(text)) return error;
    return Get_Str();
  });
  show("strDateFmt_Pf", kDates, [](std::u16string_view text) { return strDateFmt_Pf(text); });
  show("GetDecimalFmt", kDigits, [](std::u16string_view text) { return GetDecimalFmt(text); });
  show("GetDecimalFmt_4", kDigits, decimals);
  show("GetDecimalFmt_8", kDigits, [](std::u16string_view text) { return GetDecimalFmt_8(text); });
  show("GetDecimalFmt_Bus, 2 decimals", kDigits, [](std::u16string_view text) { return GetDecimalFmt_Bus(text, 2); });
}

void compare_with_copy() {
  const auto compare = [](const char* name, const std::u16string& text, auto operation) {
    print_ratio("a text of 32,766", name, "copy", on(text, operation),
                on(text, [](std::u16string_view given) { return Text(given); }));
  };
  const std::u16string words = repeated(kWords, kLongest);
  const std::u16string goods = repeated(kGoods, kLongest);
  compare("Center, words", words, Center);
  compare("Center, goods", goods, Center);
  compare("GetStr, words", words, letters);
  compare("getNum, words", words, getNum);
  compare("CharChange, words", words, CharChange);
  compare("CharChange, goods", goods, CharChange);
  compare("Replace_Str, dates", repeated(kDates, kLongest), slashes);
  compare("ConversionStr_Long, words", repeated(kWords, 32670), ConversionStr_Long);
  compare("ConversionStr_Short, words", words, ConversionStr_Short);
  compare("Get_Str, marker at the end", in_marks(words), up_to_bracket);
  compare("getString_P, markers at both ends", in_marks(words), in_brackets);
  compare("Set_String1, words", words, longest_width);
  compare("Set_String1, prose of 16,383", repeated(kProse, 16383), longest_width);
  compare("Get_String, words", words, longest_range);
  compare("Get_String, prose of 16,383", repeated(kProse, 16383), longest_range);
}

// strtod and snprintf work on char texts, and write into a buffer of the caller's.
void compare_decimals() {
  for (const char* text : {"7", "2.5", "3.14159", "-0.03125", "123456789012.12345", "12345.678e-2", "  42 "}) {
    const std::u16string number(text, text + std::strlen(text));
    print_ratio("GetDecimalFmt_4, C library", text, "strtod and snprintf", on(number, decimals), [&] {
      char result[64];
      keep(std::snprintf(result, sizeof result, "%.4f", std::strtod(text, nullptr)));
      keep(result);
    });
  }
}

#ifndef _WIN32
// Likewise, into a buffer of the caller's. component_bench has the peers of Windows.
void compare_dates() {
  const double date = 38719.6458;
  print_ratio(
      "dateToStr_Pf, C library", "38719.6458", "gmtime_r and snprintf", [&] { keep(dateToStr_Pf(date)); },
      [&] {
        keep(date);
        const auto seconds = static_cast<std::time_t>((date - 25569) * 86400);
        std::tm split{};
        gmtime_r(&seconds, &split);
        char result[16];
        keep(std::snprintf(result, sizeof result, "%d%02d%02d", split.tm_year + 1900, split.tm_mon + 1, split.tm_mday));
        keep(result);
      });
}
#else
void compare_dates() {}
#endif

}  // namespace
}  // namespace corvelle::bench

// ratios_bench [SECTION…]: all comparisons, or those of some sections: widths, searches, copies, decimals, dates,
// short, growth.
int main(int count, char** arguments) {
  using namespace corvelle::bench;
  const std::vector<std::string_view> sections(arguments + 1, arguments + count);
  const auto wanted = [&](std::string_view section) {
    return sections.empty() || std::find(sections.begin(), sections.end(), section) != sections.end();
  };
  if (wanted("widths")) {
    for (const Kind& kind : kKinds) compare_widths(kind);
  }
  if (wanted("searches")) compare_searches();
  if (wanted("copies")) compare_with_copy();
  if (wanted("decimals")) compare_decimals();
  if (wanted("dates")) compare_dates();
  if (wanted("short")) time_short_texts();
  if (wanted("growth")) {
    for (const std::size_t length : {1000U, 4000U, 16000U, 32000U}) time_growth(length);
  }
}
