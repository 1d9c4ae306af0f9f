#include "base/vectors/code_units.h"

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>

#include "base/slice.h"
#include "base/vectors/processor.h"
#include "base/vectors/scalar.h"

namespace corvelle {
namespace {

constexpr std::size_t kBlock = 8;  // units in a vector

__m128i block_at(const char16_t* units) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(units)); }
__m128i every_lane(char16_t unit) { return _mm_set1_epi16(static_cast<std::int16_t>(unit)); }
__m128i hits_at(const char16_t* units, __m128i wanted) { return _mm_cmpeq_epi16(block_at(units), wanted); }

std::size_t sum_of(__m128i quarters) {
  const __m128i halves = _mm_add_epi32(quarters, _mm_unpackhi_epi64(quarters, quarters));
  return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_add_epi32(halves, _mm_shuffle_epi32(halves, 1))));
}

// How often `unit` stands in `strides` strides of units, at most kMostStrides.
constexpr std::size_t kStride = 8 * kBlock;
constexpr std::size_t kMostStrides = std::numeric_limits<std::int16_t>::max() / 4;  // what a lane can count
std::size_t count_by_16_bytes(const char16_t* units, std::size_t strides, char16_t unit) {
  const __m128i wanted = every_lane(unit);
  __m128i first = _mm_setzero_si128();
  __m128i second = first;  // two sums, so that one addition need not wait for the other
  for (const char16_t* end = units + strides * kStride; units != end; units += kStride) {
#pragma GCC unroll 4
    for (std::size_t i = 0; i < kStride; i += 2 * kBlock) {
      first = _mm_sub_epi16(first, hits_at(units + i, wanted));
      second = _mm_sub_epi16(second, hits_at(units + i + kBlock, wanted));
    }
  }
  const __m128i ones = _mm_set1_epi16(1);
  const __m128i quarters = _mm_add_epi32(_mm_madd_epi16(first, ones), _mm_madd_epi16(second, ones));
  return sum_of(quarters);
}

__attribute__((target("avx2"))) std::size_t count_by_32_bytes(const char16_t* units, std::size_t strides,
                                                              char16_t unit) {
  const __m256i wanted = _mm256_set1_epi16(static_cast<std::int16_t>(unit));
  __m256i first = _mm256_setzero_si256();
  __m256i second = first;
  for (const char16_t* end = units + strides * kStride; units != end; units += kStride) {
    const auto* blocks = reinterpret_cast<const __m256i*>(units);
    first = _mm256_sub_epi16(first, _mm256_cmpeq_epi16(_mm256_loadu_si256(blocks), wanted));
    second = _mm256_sub_epi16(second, _mm256_cmpeq_epi16(_mm256_loadu_si256(blocks + 1), wanted));
    first = _mm256_sub_epi16(first, _mm256_cmpeq_epi16(_mm256_loadu_si256(blocks + 2), wanted));
    second = _mm256_sub_epi16(second, _mm256_cmpeq_epi16(_mm256_loadu_si256(blocks + 3), wanted));
  }
  const __m256i ones = _mm256_set1_epi16(1);
  const __m256i eighths = _mm256_add_epi32(_mm256_madd_epi16(first, ones), _mm256_madd_epi16(second, ones));
  const __m128i quarters = _mm_add_epi32(_mm256_castsi256_si128(eighths), _mm256_extracti128_si256(eighths, 1));
  return sum_of(quarters);
}

using CountInStrides = std::size_t (*)(const char16_t* units, std::size_t strides, char16_t unit);

// The wider vectors find a far field in half the time.
CountInStrides fastest_count() { return has_avx2() ? count_by_32_bytes : count_by_16_bytes; }

std::size_t count_by(CountInStrides count_in_strides, std::u16string_view text, char16_t unit) {
  std::size_t count = 0;
  while (text.size() >= kStride) {
    const std::size_t strides = std::min(kMostStrides, text.size() / kStride);
    count += count_in_strides(text.data(), strides, unit);
    text.remove_prefix(strides * kStride);
  }
  return count + scalar::count_unit(text, unit);
}

constexpr auto kBitCounts = [] {
  std::array<std::uint8_t, 1U << kBlock> counts{};
  for (unsigned bits = 0; bits < counts.size(); ++bits) counts[bits] = static_cast<std::uint8_t>(std::popcount(bits));
  return counts;
}();

// A bit for each unit of the block whose lane of `lanes` is set.
unsigned bits_of(__m128i lanes) {
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(lanes, _mm_setzero_si128())));
}

}  // namespace

std::size_t find_unit(std::u16string_view text, char16_t unit) {
  if (text.size() < kBlock) return scalar::find_unit(text, unit);
  const std::size_t last = text.size() - kBlock;
  const __m128i wanted = every_lane(unit);
  std::size_t offset = 0;
  for (; text.size() - offset >= 4 * kBlock; offset += 4 * kBlock) {
    const char16_t* units = text.data() + offset;
    const __m128i first_hits = _mm_or_si128(hits_at(units, wanted), hits_at(units + kBlock, wanted));
    const __m128i last_hits = _mm_or_si128(hits_at(units + 2 * kBlock, wanted), hits_at(units + 3 * kBlock, wanted));
    if (_mm_movemask_epi8(_mm_or_si128(first_hits, last_hits)) != 0) break;
  }
  for (;; offset += kBlock) {
    offset = std::min(offset, last);  // the last block may begin within the one before
    const unsigned hits = bits_of(hits_at(text.data() + offset, wanted));
    if (hits != 0) return offset + static_cast<std::size_t>(std::countr_zero(hits));
    if (offset == last) return kNowhere;
  }
}

std::size_t find_last_unit(std::u16string_view text, char16_t unit) {
  if (text.size() < kBlock) return scalar::find_last_unit(text, unit);
  const __m128i wanted = every_lane(unit);
  for (std::size_t offset = text.size() - kBlock;; offset -= std::min(offset, kBlock)) {
    const unsigned hits = bits_of(hits_at(text.data() + offset, wanted));
    if (hits != 0) return offset + static_cast<std::size_t>(std::bit_width(hits)) - 1;
    if (offset == 0) return kNowhere;
  }
}

// The n-th cannot stand among the first n - 1 units, so those are counted at once; it may stand in any later stride.
std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n) {
  constexpr std::size_t kFewStrides = 16;
  if (text.size() < kBlock) return scalar::find_nth_unit(text, unit, n);
  if (n == 1) return find_unit(text, unit);
  if (n == 0 || n > text.size()) return kNowhere;
  const CountInStrides count_in_strides = fastest_count();
  std::size_t offset = 0;
  if (n > kFewStrides * kStride) {  // a long count is a third faster where no load crosses a line
    offset = units_to_alignment(text.data());
    n -= scalar::count_unit(first_of(text, offset), unit);
  }
  for (const std::size_t least : {kFewStrides, std::size_t{1}}) {
    for (;;) {
      const std::size_t strides = std::clamp((n - 1) / kStride, least, kMostStrides);
      if (text.size() - offset < strides * kStride) break;
      const std::size_t hits = count_in_strides(text.data() + offset, strides, unit);
      if (hits >= n) break;
      n -= hits;
      offset += strides * kStride;
    }
  }
  for (; text.size() - offset >= kBlock; offset += kBlock) {
    unsigned hits = bits_of(hits_at(text.data() + offset, every_lane(unit)));
    const std::size_t count = kBitCounts[hits];
    if (count >= n) {
      for (; n > 1; --n) hits &= hits - 1;
      return offset + static_cast<std::size_t>(std::countr_zero(hits));
    }
    n -= count;
  }
  const std::size_t found = scalar::find_nth_unit(behind(text, offset), unit, n);
  return found == kNowhere ? kNowhere : offset + found;
}

std::size_t count_unit(std::u16string_view text, char16_t unit) {
  return text.size() < kStride ? scalar::count_unit(text, unit) : count_by(fastest_count(), text, unit);
}
std::size_t internal::count_unit_sse2(std::u16string_view text, char16_t unit) {
  return count_by(count_by_16_bytes, text, unit);
}
std::size_t internal::count_unit_avx2(std::u16string_view text, char16_t unit) {
  return count_by(count_by_32_bytes, text, unit);
}

namespace {

// How the bytes of a block move when the units with a bit in the row's number are to close up at the front.
using Shuffle = std::array<std::uint8_t, 2 * kBlock>;
__m128i load(const Shuffle& shuffle) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(shuffle.data())); }

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

// Copies the units that stay, of whole blocks a block at a time, the rest by the twin, and gives their number.
// `staying` gives the lanes of a block that stay. Each block is written in full; the next is written over what does not
// stay.
template <class Staying, class Twin>
__attribute__((target("ssse3"))) std::size_t sift(std::u16string_view text, char16_t* to, Staying staying, Twin twin) {
  std::size_t kept = 0;
  const std::size_t in_blocks = text.size() - text.size() % kBlock;
  for (std::size_t at = 0; at != in_blocks; at += kBlock) {
    const __m128i block = block_at(text.data() + at);
    const unsigned bits = bits_of(staying(block));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + kept), _mm_shuffle_epi8(block, load(kShuffles[bits])));
    kept += kBitCounts[bits];
  }
  text.remove_prefix(in_blocks);
  return kept + twin(text, to + kept);
}

__attribute__((target("ssse3"))) std::size_t copy_blocks_without(std::u16string_view text, char16_t unit,
                                                                 char16_t* to) {
  const __m128i unwanted = every_lane(unit);
  const __m128i none = _mm_setzero_si128();
  return sift(
      text, to, [=](__m128i block) { return _mm_cmpeq_epi16(_mm_cmpeq_epi16(block, unwanted), none); },
      [=](std::u16string_view rest, char16_t* end) { return scalar::copy_without(rest, unit, end); });
}

__attribute__((target("ssse3"))) std::size_t copy_blocks_range(std::u16string_view text, char16_t first, char16_t last,
                                                               char16_t* to) {
  const __m128i lowest = every_lane(first);
  const __m128i span = every_lane(static_cast<char16_t>(last - first));
  const __m128i none = _mm_setzero_si128();
  return sift(
      text, to,
      [=](__m128i block) { return _mm_cmpeq_epi16(_mm_subs_epu16(_mm_sub_epi16(block, lowest), span), none); },
      [=](std::u16string_view rest, char16_t* end) { return scalar::copy_range(rest, first, last, end); });
}

// Whether there is a block to shuffle (seven times faster), and a processor that can (SSSE3).
bool can_shuffle(std::u16string_view text) { return text.size() >= kBlock && has_ssse3(); }

}  // namespace

std::size_t copy_without(std::u16string_view text, char16_t unit, char16_t* to) {
  return can_shuffle(text) ? copy_blocks_without(text, unit, to) : scalar::copy_without(text, unit, to);
}

std::size_t copy_range(std::u16string_view text, char16_t first, char16_t last, char16_t* to) {
  return can_shuffle(text) ? copy_blocks_range(text, first, last, to) : scalar::copy_range(text, first, last, to);
}

namespace {

// The lower halves of the quarters of two blocks. What is packed keeps its lower half where both halves have its sign.
__m128i lower_halves(__m128i first, __m128i second) {
  return _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(first, 16), 16), _mm_srai_epi32(_mm_slli_epi32(second, 16), 16));
}

}  // namespace

void copy_every_second(std::u16string_view text, char16_t* to) {
  while (text.size() >= 2 * kBlock) {
    const __m128i units = lower_halves(block_at(text.data()), block_at(text.data() + kBlock));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), units);
    text.remove_prefix(2 * kBlock);
    to += kBlock;
  }
  scalar::copy_every_second(text, to);
}

namespace {

// Where the units of two blocks go when each is followed by a constant and by one of the other block, in three blocks.
struct Spread {
  Shuffle units = {};
  Shuffle seconds = {};
  Shuffle constants = {};  // FF for the bytes of the constant
};
constexpr auto kSpreads = [] {
  constexpr std::uint8_t kNothing = 0x80;
  std::array<Spread, 3> spreads;
  for (std::size_t byte = 0; byte < 3 * sizeof(Shuffle); ++byte) {
    Spread& spread = spreads[byte / sizeof(Shuffle)];
    const std::size_t place = byte % sizeof(Shuffle);
    const auto source = static_cast<std::uint8_t>(byte / 6 * 2 + byte % 2);
    const std::size_t part = byte % 6 / 2;
    spread.units[place] = part == 0 ? source : kNothing;
    spread.constants[place] = part == 1 ? 0xFF : 0;
    spread.seconds[place] = part == 2 ? source : kNothing;
  }
  return spreads;
}();

// Copies whole blocks with pairs, and gives the number of units of `text` that it copied.
__attribute__((target("ssse3"))) std::size_t copy_blocks_with_pairs(std::u16string_view text, char16_t first,
                                                                    const char16_t* seconds, char16_t* to) {
  std::size_t at = 0;
  for (; text.size() - at >= kBlock; at += kBlock) {
    const __m128i units = block_at(text.data() + at);
    const __m128i others = block_at(seconds + at);
#pragma GCC unroll 3
    for (const Spread& spread : kSpreads) {
      const __m128i both =
          _mm_or_si128(_mm_shuffle_epi8(units, load(spread.units)), _mm_shuffle_epi8(others, load(spread.seconds)));
      const __m128i all = _mm_or_si128(both, _mm_and_si128(every_lane(first), load(spread.constants)));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to), all);
      to += kBlock;
    }
  }
  return at;
}

}  // namespace

void copy_with_pairs(std::u16string_view text, char16_t first, const char16_t* seconds, char16_t* to) {
  const std::size_t copied = can_shuffle(text) ? copy_blocks_with_pairs(text, first, seconds, to) : 0;
  scalar::copy_with_pairs(behind(text, copied), first, seconds + copied, to + 3 * copied);
}

}  // namespace corvelle
