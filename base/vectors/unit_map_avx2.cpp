// Compiled for processors with 32-byte vectors. Every unit takes the same instructions, whatever it becomes, so that
// nothing depends on what a text is made of but where a unit becomes two.
#include <immintrin.h>

#include "base/vectors/unit_map.h"

namespace corvelle::internal {
namespace {

constexpr std::size_t kLanes = 16;

__m256i load(const void* from) { return _mm256_loadu_si256(static_cast<const __m256i*>(from)); }
void store(char16_t* to, __m256i units) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), units); }
__m256i every_lane(int unit) { return _mm256_set1_epi16(static_cast<short>(unit)); }

// What `table` has for the lower four bits of each byte; 0 for a byte from 128 on.
__m256i look_up(const std::uint8_t* table, __m256i bytes) {
  return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table))),
                             bytes);
}

// Places, and those of a table's second half with the highest bit turned.
struct Places {
  __m256i first;
  __m256i second;

  __m256i look_up_in(const std::uint8_t* table) const {
    return _mm256_or_si256(look_up(table, first), look_up(table + 16, second));
  }
};

struct Pair {
  __m256i first;
  __m256i second;
};

// The first of what each of 32 units becomes.
Pair first_of(const Pair& units, const UnitMap& map) {
  const __m256i low_byte = every_lane(0xFF);
  const __m256i low = _mm256_packus_epi16(_mm256_and_si256(units.first, low_byte),  //
                                          _mm256_and_si256(units.second, low_byte));
  const __m256i high = _mm256_packus_epi16(_mm256_srli_epi16(units.first, 8), _mm256_srli_epi16(units.second, 8));
  const __m256i digits = _mm256_and_si256(high, _mm256_set1_epi8(0x0F));
  const __m256i shifted = _mm256_add_epi8(low, look_up(map.shifts(), digits));
  const Places places = {shifted, _mm256_xor_si256(shifted, _mm256_set1_epi8(-128))};
  const __m256i found = _mm256_and_si256(_mm256_cmpeq_epi8(low, places.look_up_in(map.low_bytes())),
                                         _mm256_cmpeq_epi8(high, places.look_up_in(map.high_bytes())));
  const __m256i low_changes = _mm256_and_si256(found, places.look_up_in(map.low_changes()));
  const __m256i high_changes = _mm256_and_si256(found, places.look_up_in(map.high_changes()));
  const __m256i low_mapped = _mm256_xor_si256(low, low_changes);
  const __m256i high_mapped = _mm256_xor_si256(high, high_changes);
  return {_mm256_unpacklo_epi8(low_mapped, high_mapped), _mm256_unpackhi_epi8(low_mapped, high_mapped)};
}

// Lanes that stay, then such that make way: a load that begins earlier has more of the former.
struct Lanes {
  std::int16_t of[2 * kLanes + 1];
};
constexpr Lanes kStayingFirst = [] {
  Lanes lanes{};
  for (std::size_t i = 0; i <= kLanes; ++i) lanes.of[i] = -1;
  return lanes;
}();

// Sixteen units, mapped.
struct Half {
  __m256i firsts;
  __m256i seconds;       // the same, but of a unit that becomes two the second
  unsigned becomes_two;  // the even bits

  bool has_several() const { return (becomes_two & (becomes_two - 1)) != 0; }

  // Writes the units up to the first one that becomes two; the others one place later, as if none of them did. What is
  // behind them may be overwritten, too.
  void write(char16_t* to) const {
    const unsigned before = _tzcnt_u32(becomes_two);  // bytes; 32 where none becomes two
    const __m256i staying = load(reinterpret_cast<const char*>(kStayingFirst.of + kLanes) - before);
    const __m256i upper = _mm256_permute2x128_si256(seconds, seconds, 0x08);
    const __m256i one_later = _mm256_alignr_epi8(seconds, upper, 14);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + kLanes / 2 + 1), _mm256_extracti128_si256(seconds, 1));
    store(to, _mm256_blendv_epi8(one_later, firsts, staying));
  }
};

}  // namespace

Copied copy_mapped_avx2(const char16_t* text, std::size_t length, const UnitMap& map, char16_t* to) {
  const __m256i lengthened = every_lane(map.lengthened());
  const __m256i difference = every_lane(map.difference());
  const auto half = [&](__m256i units, __m256i firsts) {
    const __m256i hits = _mm256_cmpeq_epi16(units, lengthened);
    return Half{firsts, _mm256_xor_si256(firsts, _mm256_and_si256(hits, difference)),
                static_cast<unsigned>(_mm256_movemask_epi8(hits)) & 0x55555555U};
  };
  const char16_t* from = text;
  const char16_t* const last = text + (length < 2 * kLanes ? 0 : length - 2 * kLanes);
  char16_t* end = to;
  const auto step = [&](std::size_t units, std::size_t more) {
    from += units;
    end += units + more;
  };
  while (from < last) {
    const Pair units = {load(from), load(from + kLanes)};
    const Pair mapped = first_of(units, map);
    const Half first = half(units.first, mapped.first);
    const Half second = half(units.second, mapped.second);
    if ((first.becomes_two | second.becomes_two) == 0) {
      store(end, mapped.first);
      store(end + kLanes, mapped.second);
      step(2 * kLanes, 0);
      continue;
    }
    first.write(end);
    if (first.has_several()) {
      step(_tzcnt_u32(first.becomes_two) / 2 + 1, 1);
      continue;
    }
    step(kLanes, first.becomes_two != 0 ? 1 : 0);
    if (second.has_several()) continue;
    second.write(end);
    step(kLanes, second.becomes_two != 0 ? 1 : 0);
  }
  return {static_cast<std::size_t>(from - text), static_cast<std::size_t>(end - to)};
}

}  // namespace corvelle::internal
