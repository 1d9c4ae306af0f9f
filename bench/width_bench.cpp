// What measuring a text costs, next to reading it and to converting it: five kinds of text, short, medium and longest.
#include <benchmark/benchmark.h>
#include <iconv.h>
#include <unicode/ucnv.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/vectors/width_count.h"
#include "bench/peers.h"
#include "bench/texts.h"
#include "text/display_width.h"

namespace corvelle {
namespace {

using bench::Kind;
using bench::kKinds;
using bench::kLongest;
using bench::plain_read;
using bench::text_of;

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
  if (!GetByte_Pf(text_of(kind, length), 0).failed()) {  // elsewhere these two end in an overflow
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
  for (const corvelle::bench::Kind& kind : corvelle::bench::kKinds) {
    for (const std::size_t length : {std::size_t{1}, std::size_t{8}, std::size_t{16}, std::size_t{40},
                                     std::size_t{1000}, corvelle::bench::kLongest}) {
      corvelle::add_all(kind, length);
    }
  }
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
