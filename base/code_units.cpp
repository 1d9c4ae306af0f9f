#include "base/code_units.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace corvelle {
namespace scalar {
namespace {

// Moves the units that stay to the front; without branches, since text mixes both kinds without a pattern.
template <class Stays>
std::size_t sift(char16_t* text, std::size_t length, Stays stays) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const char16_t unit = text[i];
    text[kept] = unit;
    kept += stays(unit) ? 1 : 0;
  }
  return kept;
}

}  // namespace

std::size_t find_unit(std::u16string_view text, char16_t unit) { return text.find(unit); }

std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n) {
  if (n == 0) return kNowhere;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == unit && --n == 0) return i;
  }
  return kNowhere;
}

std::size_t count_unit(std::u16string_view text, char16_t unit) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), unit));
}

std::size_t remove_unit(char16_t* text, std::size_t length, char16_t unit) {
  return sift(text, length, [=](char16_t c) { return c != unit; });
}

std::size_t keep_range(char16_t* text, std::size_t length, char16_t first, char16_t last) {
  return sift(text, length, [=](char16_t c) { return c >= first && c <= last; });
}

}  // namespace scalar

#ifdef __SSE2__
namespace {

constexpr std::size_t kBlock = 8;  // units in a vector

__m128i block_at(const char16_t* units) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(units)); }
__m128i every_lane(char16_t unit) { return _mm_set1_epi16(static_cast<std::int16_t>(unit)); }

// How often `wanted` stands in `length` units; `length` is a multiple of kStride and at most kCountable.
constexpr std::size_t kStride = 4 * kBlock;
constexpr std::size_t kCountable = 32 * kStride;
std::size_t count_by_16_bytes(const char16_t* units, std::size_t length, char16_t unit) {
  const __m128i wanted = every_lane(unit);
  __m128i first = _mm_setzero_si128();
  __m128i second = first;  // two sums, so that one addition need not wait for the other
  for (std::size_t i = 0; i < length; i += kStride) {
    for (std::size_t half = 0; half < kStride; half += 2 * kBlock) {
      first = _mm_sub_epi16(first, _mm_cmpeq_epi16(block_at(units + i + half), wanted));
      second = _mm_sub_epi16(second, _mm_cmpeq_epi16(block_at(units + i + half + kBlock), wanted));
    }
  }
  // A lane has counted at most 4 * 32 / 2 hits in each sum, so their sum still fits the lane's low byte.
  const __m128i halves = _mm_sad_epu8(_mm_add_epi16(first, second), _mm_setzero_si128());
  return static_cast<std::size_t>(_mm_cvtsi128_si32(halves)) + static_cast<std::size_t>(_mm_extract_epi16(halves, 4));
}

__attribute__((target("avx2"))) std::size_t count_by_32_bytes(const char16_t* units, std::size_t length,
                                                              char16_t unit) {
  const __m256i wanted = _mm256_set1_epi16(static_cast<std::int16_t>(unit));
  __m256i first = _mm256_setzero_si256();
  __m256i second = first;
  for (std::size_t i = 0; i < length; i += kStride) {
    const auto* blocks = reinterpret_cast<const __m256i*>(units + i);
    first = _mm256_sub_epi16(first, _mm256_cmpeq_epi16(_mm256_loadu_si256(blocks), wanted));
    second = _mm256_sub_epi16(second, _mm256_cmpeq_epi16(_mm256_loadu_si256(blocks + 1), wanted));
  }
  const __m256i quarters = _mm256_sad_epu8(_mm256_add_epi16(first, second), _mm256_setzero_si256());
  const __m128i halves = _mm_add_epi32(_mm256_castsi256_si128(quarters), _mm256_extracti128_si256(quarters, 1));
  return static_cast<std::size_t>(_mm_cvtsi128_si32(halves)) + static_cast<std::size_t>(_mm_extract_epi16(halves, 4));
}

// The wider vectors find a far field in half the time.
std::size_t count_in_strides(const char16_t* units, std::size_t length, char16_t unit) {
  return __builtin_cpu_supports("avx2") != 0 ? count_by_32_bytes(units, length, unit)
                                             : count_by_16_bytes(units, length, unit);
}

// A bit for each unit of the block whose lane of `lanes` is set.
unsigned bits_of(__m128i lanes) {
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(lanes, _mm_setzero_si128())));
}

}  // namespace

std::size_t find_unit(std::u16string_view text, char16_t unit) {
  const __m128i wanted = every_lane(unit);
  std::size_t offset = 0;
  for (; text.size() - offset >= kBlock; offset += kBlock) {
    const unsigned hits = bits_of(_mm_cmpeq_epi16(block_at(text.data() + offset), wanted));
    if (hits != 0) return offset + static_cast<std::size_t>(std::countr_zero(hits));
  }
  const std::size_t found = scalar::find_unit(text.substr(offset), unit);
  return found == kNowhere ? kNowhere : offset + found;
}

std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n) {
  std::size_t offset = 0;
  for (const std::size_t step : {kCountable, kStride}) {
    while (text.size() - offset >= step) {
      const std::size_t hits = count_in_strides(text.data() + offset, step, unit);
      if (hits >= n) break;
      n -= hits;
      offset += step;
    }
  }
  const std::size_t found = scalar::find_nth_unit(text.substr(offset), unit, n);
  return found == kNowhere ? kNowhere : offset + found;
}

std::size_t count_unit(std::u16string_view text, char16_t unit) {
  std::size_t count = 0;
  while (text.size() >= kStride) {
    const std::size_t length = std::min(kCountable, text.size() / kStride * kStride);
    count += count_in_strides(text.data(), length, unit);
    text.remove_prefix(length);
  }
  return count + scalar::count_unit(text, unit);
}

namespace {

// How the bytes of a block move when the units with a bit in the row's number are to close up at the front.
using Shuffle = std::array<std::uint8_t, 2 * kBlock>;
constexpr auto kShuffles = [] {
  std::array<Shuffle, 1U << kBlock> shuffles{};
  for (unsigned bits = 0; bits < shuffles.size(); ++bits) {
    std::size_t byte = 0;
    for (unsigned unit = 0; unit < kBlock; ++unit) {
      if ((bits >> unit & 1U) == 0) continue;
      shuffles[bits][byte++] = static_cast<std::uint8_t>(2 * unit);
      shuffles[bits][byte++] = static_cast<std::uint8_t>(2 * unit + 1);
    }
  }
  return shuffles;
}();

constexpr auto kBitCounts = [] {
  std::array<std::uint8_t, 1U << kBlock> counts{};
  for (unsigned bits = 0; bits < counts.size(); ++bits) counts[bits] = static_cast<std::uint8_t>(std::popcount(bits));
  return counts;
}();

// Moves the units of whole blocks that stay to the front, a block at a time, and gives their number. `staying` gives
// the lanes of a block that stay. A block is written over units that were read before, since no more stay than were
// read.
template <class Staying>
__attribute__((target("ssse3"))) std::size_t sift_blocks(char16_t* text, std::size_t length, Staying staying) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i + kBlock <= length; i += kBlock) {
    const __m128i block = block_at(text + i);
    const unsigned bits = bits_of(staying(block));
    const __m128i closed_up =
        _mm_shuffle_epi8(block, _mm_loadu_si128(reinterpret_cast<const __m128i*>(kShuffles[bits].data())));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(text + kept), closed_up);
    kept += kBitCounts[bits];
  }
  return kept;
}

// Sifts whole blocks by shuffling where the processor can (SSSE3, seven times faster), the rest by the twin.
template <class Staying, class Twin>
std::size_t sift(char16_t* text, std::size_t length, Staying staying, Twin twin) {
  if (length < kBlock || __builtin_cpu_supports("ssse3") == 0) return twin(text, length);
  const std::size_t kept = sift_blocks(text, length, staying);
  const std::size_t rest = length % kBlock;
  std::copy(text + length - rest, text + length, text + kept);
  return kept + twin(text + kept, rest);
}

}  // namespace

std::size_t remove_unit(char16_t* text, std::size_t length, char16_t unit) {
  const __m128i unwanted = every_lane(unit);
  const __m128i none = _mm_setzero_si128();
  return sift(
      text, length, [=](__m128i block) { return _mm_cmpeq_epi16(_mm_cmpeq_epi16(block, unwanted), none); },
      [=](char16_t* rest, std::size_t rest_length) { return scalar::remove_unit(rest, rest_length, unit); });
}

std::size_t keep_range(char16_t* text, std::size_t length, char16_t first, char16_t last) {
  const __m128i lowest = every_lane(first);
  const __m128i span = every_lane(static_cast<char16_t>(last - first));
  const __m128i none = _mm_setzero_si128();
  return sift(
      text, length,
      [=](__m128i block) { return _mm_cmpeq_epi16(_mm_subs_epu16(_mm_sub_epi16(block, lowest), span), none); },
      [=](char16_t* rest, std::size_t rest_length) { return scalar::keep_range(rest, rest_length, first, last); });
}

#else

std::size_t find_unit(std::u16string_view text, char16_t unit) { return scalar::find_unit(text, unit); }
std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n) {
  return scalar::find_nth_unit(text, unit, n);
}
std::size_t count_unit(std::u16string_view text, char16_t unit) { return scalar::count_unit(text, unit); }
std::size_t remove_unit(char16_t* text, std::size_t length, char16_t unit) {
  return scalar::remove_unit(text, length, unit);
}
std::size_t keep_range(char16_t* text, std::size_t length, char16_t first, char16_t last) {
  return scalar::keep_range(text, length, first, last);
}

#endif

}  // namespace corvelle
