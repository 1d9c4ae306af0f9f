#include "base/vectors/width_count.h"

#include <emmintrin.h>

#include <algorithm>

#include "base/vectors/code_units.h"
#include "base/vectors/processor.h"
#include "base/vectors/width_count_kernel.h"

namespace corvelle {
namespace internal {
namespace {

// Eight units.
struct Units {
  static constexpr std::size_t kLanes = 8;

  __m128i lanes;

  static Units of(int number) { return {_mm_set1_epi16(static_cast<short>(number))}; }
  static Units load(const char16_t* from) { return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))}; }

  friend Units add(Units a, Units b) { return {_mm_add_epi16(a.lanes, b.lanes)}; }
  friend Units subtract(Units a, Units b) { return {_mm_sub_epi16(a.lanes, b.lanes)}; }
  friend Units greater(Units a, Units b) { return {_mm_cmpgt_epi16(a.lanes, b.lanes)}; }
  friend Units but_not(Units a, Units b) { return {_mm_andnot_si128(b.lanes, a.lanes)}; }
  friend Units either(Units a, Units b) { return {_mm_or_si128(a.lanes, b.lanes)}; }
  friend bool any(Units a, Units bits) {
    return _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(a.lanes, bits.lanes), _mm_setzero_si128())) != 0xFFFF;
  }
  // The sum of the lanes, each below 256 as in a chunk.
  friend std::size_t sum(Units a) {
    const __m128i halves = _mm_sad_epu8(a.lanes, _mm_setzero_si128());
    return static_cast<std::size_t>(_mm_cvtsi128_si32(halves) + _mm_extract_epi16(halves, 4));
  }
};

}  // namespace

std::size_t double_byte_count_by_character(std::u16string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), is_double_byte));
}

std::size_t double_byte_count_sse2(std::u16string_view text) {
  constexpr std::size_t kByCharacter = 12 * kBlock;  // how far to look up before the quicker way is tried again
  std::size_t total = 0;
  while (!text.empty()) {
    const Counted simple = scan_ascii_and_chinese<Units>(text.data(), text.size());
    text.remove_prefix(simple.characters);
    const Counted rest = scan_by_character(text.data(), std::min(text.size(), kByCharacter));
    text.remove_prefix(rest.characters);
    total += simple.double_byte + rest.double_byte;
  }
  return total;
}

namespace {

// Apart from double_byte_count, whose shortest texts the registers that this uses would cost a third of their time.
[[gnu::noinline]] std::size_t double_byte_count_of_many(std::u16string_view text) {
  if (text.size() < kBlock) return scan_by_character(text.data(), text.size()).double_byte;
  if (!has_avx2()) return double_byte_count_sse2(text);
  // In a long text, loads that cross no line of the cache make up for the units before them.
  const std::size_t head = text.size() < 8 * kBlock ? 0 : units_to_alignment(text.data());
  return scan_by_character(text.data(), head).double_byte +
         double_byte_count_avx2(text.data() + head, text.size() - head);
}

}  // namespace
}  // namespace internal

std::size_t double_byte_count(std::u16string_view text) {
  constexpr std::size_t kFew = 8;
  return text.size() < kFew ? internal::double_byte_count_by_character(text)
                            : internal::double_byte_count_of_many(text);
}

}  // namespace corvelle
