// What cutting, sifting and replacing a text costs, next to a plain copy of it and, where a text is searched for
// fields, next to a plain loop over its characters; short, medium and longest texts.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/text.h"
#include "bench/peers.h"
#include "bench/texts.h"
#include "text/classification.h"
#include "text/fields.h"
#include "text/pinyin.h"
#include "text/replacement.h"
#include "text/substrings.h"
#include "text/text_slot.h"

namespace corvelle {
namespace {

constexpr std::size_t kLengths[] = {16, 1000, 32766};

using bench::kDates;
using bench::kGoods;
using bench::kProse;
using bench::kWords;
using bench::plain_field;
using bench::repeated;

// Runs `operation` on the text of the benchmark's name; the rate is the characters of that text.
template <class Operation>
void add(const char* name, std::u16string text, Operation operation) {
  const std::string full_name = std::string(name) + "/" + std::to_string(text.size());
  benchmark::RegisterBenchmark(full_name.c_str(), [text = std::move(text), operation](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(operation(std::u16string_view(text)));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
  });
}

template <class Operation>
void add_at_each_length(const char* name, std::u16string_view sample, Operation operation) {
  for (const std::size_t length : kLengths) add(name, repeated(sample, length), operation);
}

Text copy_of(std::u16string_view text) { return Text(text); }

template <class Field>
Result<Text> path_by(Field field, std::u16string_view path) {
  return GetPath(path, [&](std::u16string_view text, std::int16_t number, std::u16string_view separator) {
    return field(text, number, separator);
  });
}

void add_classification() {
  add_at_each_length("is_AlphaNum, letters", u"abcXYZ", is_AlphaNum);
  add_at_each_length("Is_HuanZi, letters and digits", u"abc123", Is_HuanZi);
  add_at_each_length("getNum, words", kWords, getNum);
  add_at_each_length("CharChange, words", kWords, CharChange);
  add_at_each_length("CharChange, prose", kProse, CharChange);
}

void add_fields() {
  const auto whole_width = [](std::u16string_view text) { return Set_String1(text, 32766, 0); };
  const auto range = [](std::u16string_view text) { return Get_String(text, 1, 32766); };
  add_at_each_length("Set_String1 to 20 columns, words", kWords,
                     [](std::u16string_view text) { return Set_String1(text, 20, 0); });
  add("Set_String1 to 32766 columns, words", repeated(kWords, 32766), whole_width);
  add("Set_String1 to 32766 columns, prose", repeated(kProse, 16383), whole_width);
  add_at_each_length("Get_String of 20 columns, goods", kGoods,
                     [](std::u16string_view text) { return Get_String(text, 1, 20); });
  add("Get_String of 32766 columns, words", repeated(kWords, 32766), range);
  add("Get_String of 32766 columns, prose", repeated(kProse, 16383), range);
  add_at_each_length("Center, words", kWords, Center);
  add_at_each_length("Center, goods", kGoods, Center);
  add_at_each_length("Center, prose without a space", kProse, Center);
  add_at_each_length("GetStr, words", kWords, [](std::u16string_view text) {
    return GetStr(text, [](std::u16string_view character) { return is_AlphaNum(character); });
  });
  add("getStr_Pf, field 3 of a short row", u"1001,bolt,200,",
      [](std::u16string_view text) { return getStr_Pf(text, 3, u","); });
  add("plain loop, field 3 of a short row", u"1001,bolt,200,",
      [](std::u16string_view text) { return plain_field(text, 3, u","); });
  add("getStr_Pf, field 10000", repeated(u"ab,", 32766),
      [](std::u16string_view text) { return getStr_Pf(text, 10000, u","); });
  add("plain loop, field 10000", repeated(u"ab,", 32766),
      [](std::u16string_view text) { return plain_field(text, 10000, u","); });
}

void add_substrings() {
  for (const std::size_t length : {std::size_t{1}, std::size_t{1000}, std::size_t{32000}}) {
    add("GetPath, backslashes", repeated(u"\\", length),
        [](std::u16string_view path) { return path_by(getStr_Pf, path); });
    add("plain loop, backslashes", repeated(u"\\", length),
        [](std::u16string_view path) { return path_by(plain_field, path); });
  }
  add("GetPath, a file", u"D:\\仓库\\报表\\2024\\库存.mdb",
      [](std::u16string_view path) { return path_by(getStr_Pf, path); });
  for (const std::size_t length : kLengths) {
    std::u16string marked = repeated(kProse, length);
    marked.front() = u'[';
    marked.back() = u']';
    add("Get_Str, marker at the end", marked, [](std::u16string_view text) { return Get_Str(text, u"]"); });
    add("getString_P, markers at both ends", marked,
        [](std::u16string_view text) { return getString_P(text, u"[", u"]"); });
  }
}

void add_replacement() {
  add_at_each_length("Replace_Str, dates", kDates,
                     [](std::u16string_view text) { return Replace_Str(text, u"-", u"/"); });
  add_at_each_length("Replace_Str by two characters, words", kWords.substr(0, 12),
                     [](std::u16string_view text) { return Replace_Str(text, u"xy", u"/"); });
  add_at_each_length("ConversionStr_Short, words", kWords, ConversionStr_Short);
  for (const std::size_t length : {16, 1000, 32670})
    add("ConversionStr_Long, words", repeated(kWords, length), ConversionStr_Long);
}

void add_the_rest() {
  add_at_each_length("Get_String_PY, prose", kProse, [](std::u16string_view text) {
    return Get_String_PY(text, [](std::u16string_view character) { return Get_Char_PY(character); });
  });
  add_at_each_length("Set_Str and Get_Str, words", kWords, [](std::u16string_view text) -> Result<Text> {
    if (Error error = Set_Str(text)) return error;
    return Get_Str();
  });
}

const bool kAdded = [] {
  add_at_each_length("copy", kWords, copy_of);
  add_classification();
  add_fields();
  add_substrings();
  add_replacement();
  add_the_rest();
  return true;
}();

}  // namespace
}  // namespace corvelle

BENCHMARK_MAIN();
