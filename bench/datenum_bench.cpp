// What formatting a number text or a date costs, next to the C library doing the same through doubles and broken-down
// times. The peers work on char texts and write into a buffer of the caller's; ours read and return UTF-16 texts.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "datenum/date_text.h"
#include "datenum/decimal_format.h"

namespace corvelle {
namespace {

constexpr const char* kNumberTexts[] = {"7",    "2.5", "3.14159", "-0.03125", "123456789012.12345", "12345.678e-2",
                                        "  42 "};

void decimals(benchmark::State& state, const char* text) {
  const std::u16string number(text, text + std::char_traits<char>::length(text));
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(GetDecimalFmt_4(number));
}

void decimals_by_c_library(benchmark::State& state, const char* text) {
  char result[64];
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(std::snprintf(result, sizeof result, "%.4f", std::strtod(text, nullptr)));
    benchmark::DoNotOptimize(result);
  }
}

void date_text(benchmark::State& state) {
  double date = 38719.6458;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(date);
    benchmark::DoNotOptimize(dateToStr_Pf(date));
  }
}

void date_text_by_c_library(benchmark::State& state) {
  char result[16];
  double date = 38719.6458;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(date);
    const auto seconds = static_cast<std::time_t>((date - 25569) * 86400);
    std::tm split;
    gmtime_r(&seconds, &split);
    benchmark::DoNotOptimize(
        std::snprintf(result, sizeof result, "%d%02d%02d", split.tm_year + 1900, split.tm_mon + 1, split.tm_mday));
    benchmark::DoNotOptimize(result);
  }
}
BENCHMARK(date_text);
BENCHMARK(date_text_by_c_library);

void date_with_marks(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(strDateFmt_Pf(u"20060102"));
}
BENCHMARK(date_with_marks);

}  // namespace
}  // namespace corvelle

int main(int argc, char** argv) {
  for (const char* text : corvelle::kNumberTexts) {
    const std::string suffix = std::string("/") + text;
    benchmark::RegisterBenchmark(("GetDecimalFmt_4" + suffix).c_str(), corvelle::decimals, text);
    benchmark::RegisterBenchmark(("strtod_snprintf" + suffix).c_str(), corvelle::decimals_by_c_library, text);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
}
