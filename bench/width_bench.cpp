// What measuring a text costs, next to reading it and to converting it: five kinds of text, short, medium and longest.
#include <benchmark/benchmark.h>
#include <iconv.h>
#include <unicode/ucnv.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text/display_width.h"
#include "text/width_count.h"

namespace corvelle {
namespace {

constexpr std::size_t kLongest = 32766;
constexpr unsigned kSeed = 20240229;

char16_t ascii(std::mt19937& random) { return static_cast<char16_t>(u' ' + random() % 95); }
char16_t chinese(std::mt19937& random) { return static_cast<char16_t>(u'一' + random() % 20902); }

void append_ascii(std::u16string& text, std::mt19937& random) { text += ascii(random); }
void append_chinese(std::u16string& text, std::mt19937& random) { text += chinese(random); }
void append_any_unit(std::u16string& text, std::mt19937& random) { text += static_cast<char16_t>(random()); }

// Goods names: runs of either kind, of 1 to 8 characters.
void append_mixed(std::u16string& text, std::mt19937& random) {
  const auto character = random() % 2 == 0 ? ascii : chinese;
  for (auto left = 1 + random() % 8; left > 0; --left) text += character(random);
}

// A clause of 2 to 12 characters and a mark, every eighth one in quotes or with full-width digits.
void append_prose(std::u16string& text, std::mt19937& random) {
  constexpr std::u16string_view kMarks = u"，，，，，。。。、、；：？！…—";
  const auto kind = random() % 16;
  if (kind == 0) text += u'“';
  if (kind == 1) text += u"《";
  if (kind == 2) text += u"（１２Ａ）";
  for (auto left = 2 + random() % 11; left > 0; --left) text += chinese(random);
  if (kind == 0) text += u'”';
  if (kind == 1) text += u"》";
  if (kind == 3) text += u"·";
  text += kMarks[random() % kMarks.size()];
}

struct Kind {
  const char* name;
  void (*append)(std::u16string&, std::mt19937&);
};

constexpr std::array kKinds = {Kind{"ASCII", append_ascii}, Kind{"Chinese", append_chinese},
                               Kind{"mixed", append_mixed}, Kind{"prose", append_prose},
                               Kind{"random units", append_any_unit}};

std::u16string text_of(const Kind& kind, std::size_t length) {
  std::mt19937 random(kSeed);
  std::u16string text;
  while (text.size() < length) kind.append(text, random);
  text.resize(length);
  return text;
}

// A plain read: the sum of the text's 64-bit words.
std::uint64_t plain_read(std::u16string_view text) {
  std::uint64_t sum = 0;
  for (std::size_t at = 0; at + 4 <= text.size(); at += 4) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, sizeof word);
    sum += word;
  }
  return sum;
}

// The bytes of the whole text in code page 936, as ICU converts it into a buffer that is large enough.
std::size_t icu_bytes(std::u16string_view text) {
  static UConverter* const converter = [] {
    UErrorCode error = U_ZERO_ERROR;
    return ucnv_open("windows-936", &error);
  }();
  static std::vector<char> bytes(4 * kLongest);
  UErrorCode error = U_ZERO_ERROR;
  return static_cast<std::size_t>(ucnv_fromUChars(converter, bytes.data(), static_cast<std::int32_t>(bytes.size()),
                                                  text.data(), static_cast<std::int32_t>(text.size()), &error));
}

// The same by iconv, which has to be asked character by character, since it stops at one that the code page lacks.
std::size_t iconv_bytes(std::u16string_view text) {
  static iconv_t const conversion = iconv_open("GBK", "UTF-16LE");
  std::size_t total = 0;
  for (char16_t character : text) {
    std::array<char, 4> bytes{};
    auto* from = reinterpret_cast<char*>(&character);
    char* to = bytes.data();
    std::size_t from_left = sizeof character;
    std::size_t to_left = bytes.size();
    const bool failed = iconv(conversion, &from, &from_left, &to, &to_left) == static_cast<std::size_t>(-1);
    total += failed ? 1 : bytes.size() - to_left;
  }
  return total;
}

template <class Operation>
void add(const char* what, const Kind& kind, std::size_t length, Operation operation) {
  const std::string name = std::string(what) + "/" + kind.name + "/" + std::to_string(length);
  benchmark::RegisterBenchmark(name.c_str(), [operation, text = text_of(kind, length)](benchmark::State& state) {
    for (auto _ : state) {
      std::u16string_view view = text;
      benchmark::DoNotOptimize(view);
      benchmark::DoNotOptimize(operation(view));
    }
  });
}

void add_all(const Kind& kind, std::size_t length) {
  add("plain read", kind, length, plain_read);
  add("sumByte_Pf", kind, length, sumByte_Pf);
  if (sumByte_Pf(text_of(kind, length)) <= 32767) {  // elsewhere these two end in an overflow
    add("GetByte_Pf", kind, length, [](std::u16string_view text) { return GetByte_Pf(text, 0); });
    add("Get_StrWidth", kind, length, Get_StrWidth);
  }
  add("count with 16-byte vectors", kind, length, internal::double_byte_count_sse2);
  add("count by character", kind, length, internal::double_byte_count_by_character);
  add("ICU windows-936", kind, length, icu_bytes);
  add("iconv by character", kind, length, iconv_bytes);
}

}  // namespace
}  // namespace corvelle

int main(int count, char** arguments) {
  for (const corvelle::Kind& kind : corvelle::kKinds) {
    for (const std::size_t length :
         {std::size_t{1}, std::size_t{8}, std::size_t{16}, std::size_t{40}, std::size_t{1000}, corvelle::kLongest}) {
      corvelle::add_all(kind, length);
    }
  }
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
