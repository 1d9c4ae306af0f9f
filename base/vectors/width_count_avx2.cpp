// Compiled for processors with 32-byte vectors, which measure ASCII, Chinese and Chinese prose in half the time. (With
// 16-byte vectors scan_prose would be no faster than looking the characters up.)
#include <immintrin.h>

#include "base/vectors/width_count.h"
#include "base/vectors/width_count_kernel.h"

namespace corvelle::internal {
namespace {

// Sixteen units.
struct Units {
  static constexpr std::size_t kLanes = 16;

  __m256i lanes;

  static Units of(int number) { return {_mm256_set1_epi16(static_cast<short>(number))}; }
  static Units load(const char16_t* from) { return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from))}; }

  friend Units add(Units a, Units b) { return {_mm256_add_epi16(a.lanes, b.lanes)}; }
  friend Units subtract(Units a, Units b) { return {_mm256_sub_epi16(a.lanes, b.lanes)}; }
  friend Units greater(Units a, Units b) { return {_mm256_cmpgt_epi16(a.lanes, b.lanes)}; }
  friend Units but_not(Units a, Units b) { return {_mm256_andnot_si256(b.lanes, a.lanes)}; }
  friend Units either(Units a, Units b) { return {_mm256_or_si256(a.lanes, b.lanes)}; }
  friend bool any(Units a, Units bits) { return _mm256_testz_si256(a.lanes, bits.lanes) == 0; }
  friend std::size_t sum(Units a) { return sum_of_bytes(a.lanes); }

  static std::size_t sum_of_bytes(__m256i bytes) {
    const __m256i quarters = _mm256_sad_epu8(bytes, _mm256_setzero_si256());
    const __m128i halves = _mm_add_epi32(_mm256_castsi256_si128(quarters), _mm256_extracti128_si256(quarters, 1));
    return static_cast<std::size_t>(_mm_cvtsi128_si32(halves) + _mm_extract_epi16(halves, 4));
  }
};

// A constant vector.
struct alignas(32) Bytes {
  std::uint8_t of[32];  // NOLINT(modernize-avoid-c-arrays)

  __m256i load() const { return _mm256_load_si256(reinterpret_cast<const __m256i*>(of)); }
};

// A number for each hexadecimal digit, twice, since vectors look up by halves.
constexpr Bytes twice(const std::uint8_t (&numbers)[16]) {  // NOLINT(modernize-avoid-c-arrays)
  Bytes bytes{};
  for (int i = 0; i < 32; ++i) bytes.of[i] = numbers[i % 16];
  return bytes;
}

constexpr Bytes all(std::uint8_t number) {
  Bytes bytes{};
  for (std::uint8_t& byte : bytes.of) byte = number;
  return bytes;
}

// Picks for each digit, a byte of 0 to 15, what `table` has for it; 0 for a byte from 128 on.
__m256i look_up(const Bytes& table, __m256i digits) { return _mm256_shuffle_epi8(table.load(), digits); }

// The pages 4E to 9E are double-byte throughout.
struct PageConstants {
  Bytes digit = all(0x0F);
  Bytes to_highest = all(0x100 + 0x7F - 0x9E);
  Bytes before_first = all(0x7F - 0x9E + 0x4E - 1);

  __m256i first_digits(__m256i bytes) const { return _mm256_and_si256(_mm256_srli_epi16(bytes, 4), digit.load()); }
  __m256i second_digits(__m256i bytes) const { return _mm256_and_si256(bytes, digit.load()); }
  __m256i all_double_byte(__m256i pages) const {
    return _mm256_cmpgt_epi8(_mm256_add_epi8(pages, to_highest.load()), before_first.load());
  }
};

// Hides from the compiler what the constants are: where registers are few, it would make some of them anew in each
// round instead of fetching them.
template <class Constants>
const Constants& opaque(const Constants& constants) {
  const Constants* address = &constants;
  asm("" : "+r"(address));
  return *address;
}

// The upper bytes of 32 units, in the order in which packing leaves them.
__m256i pages_of(__m256i low, __m256i high) {
  return _mm256_packus_epi16(_mm256_srli_epi16(low, 8), _mm256_srli_epi16(high, 8));
}

// What prose is made of beside Chinese characters, by the four digits of a character. Each bit stands for a group, all
// characters of some first, second, third and fourth digits. ASCII is the sign bit; all characters that are of other
// groups alone are double-byte:
//   1 FF01 to FF0F, 2 FF10 to FF4F, 4 3000 to 300F but 3004, 8 brackets of 301x, 00B7 and others of 00Bx and 30Bx,
//   16 the dashes and quotes of 2010 to 201F, 32 2025, 2026 and others of 201x, 301x and 302x, 64 9F00 to 9F9F.
struct ProseConstants : PageConstants {
  Bytes lower_first = twice({0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15});
  Bytes by_first = twice({136, 0, 48, 44, 0, 0, 0, 0, 0, 64, 0, 0, 0, 0, 0, 3});
  Bytes by_second = twice({188, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 67});
  Bytes by_third = twice({197, 250, 226, 194, 194, 192, 192, 192, 64, 64, 0, 8, 0, 0, 0, 0});
  Bytes by_fourth = twice({222, 207, 199, 215, 219, 255, 247, 207, 215, 215, 199, 199, 215, 215, 199, 199});
};
constexpr ProseConstants kProse;

[[gnu::noinline]] Counted scan_simple(const char16_t* text, std::size_t length) {
  return scan_ascii_and_chinese<Units>(text, length);
}

// What 32 units are, in the order in which packing leaves them.
struct Found {
  __m256i groups;
  __m256i known;  // 0 for a unit that is neither of a group nor a Chinese character

  unsigned ascii() const {
    return static_cast<unsigned>(_mm_popcnt_u32(static_cast<unsigned>(_mm256_movemask_epi8(groups))));
  }
};

Found find_groups(const ProseConstants& constants, const char16_t* text) {
  const __m256i low_apart = _mm256_shuffle_epi8(Units::load(text).lanes, constants.lower_first.load());
  const __m256i high_apart = _mm256_shuffle_epi8(Units::load(text + Units::kLanes).lanes, constants.lower_first.load());
  const __m256i pages = _mm256_unpackhi_epi64(low_apart, high_apart);
  const __m256i bytes = _mm256_unpacklo_epi64(low_apart, high_apart);
  const __m256i groups_of_page = _mm256_and_si256(look_up(constants.by_first, constants.first_digits(pages)),
                                                  look_up(constants.by_second, constants.second_digits(pages)));
  const __m256i groups_of_byte = _mm256_and_si256(look_up(constants.by_third, constants.first_digits(bytes)),
                                                  look_up(constants.by_fourth, constants.second_digits(bytes)));
  const __m256i groups = _mm256_and_si256(groups_of_page, groups_of_byte);
  return {groups, _mm256_or_si256(groups, constants.all_double_byte(pages))};
}

// Counts blocks of ASCII, Chinese characters, full-width forms and the punctuation of Chinese prose.
[[gnu::noinline]] Counted scan_prose(const char16_t* text, std::size_t length) {
  const ProseConstants& constants = opaque(kProse);
  std::size_t ascii = 0;
  std::size_t at = 0;
  for (; at + kBlock <= length; at += kBlock) {
    const Found first = find_groups(constants, text + at);
    const Found second = find_groups(constants, text + at + kBlock / 2);
    const __m256i least = _mm256_min_epu8(first.known, second.known);
    if (_mm256_movemask_epi8(_mm256_cmpeq_epi8(least, _mm256_setzero_si256())) != 0) break;
    ascii += first.ascii() + second.ascii();
  }
  return {at, at - ascii};
}

// Bits for the pages of which some characters are double-byte: a page is one of them where the bits of its two digits
// have one in common. The sign bit alone stands for E0 to E7, double-byte throughout; but for those and 4E to 9E, the
// other pages have none.
struct ByPageConstants : PageConstants {
  Bytes by_first = twice({1, 0, 2, 4, 0, 0, 0, 0, 0, 8, 0, 0, 0, 0, 144, 40});
  Bytes by_second = twice({135, 135, 135, 135, 131, 130, 130, 128, 16, 32, 32, 0, 0, 0, 32, 8});
};
constexpr ByPageConstants kByPage;

// Counts blocks of any characters. Most are told by their page, or are ASCII; the others are looked up.
[[gnu::noinline]] Counted scan_by_page(const char16_t* text, std::size_t length) {
  constexpr std::size_t kStep = 2 * Units::kLanes;
  constexpr int kUsualLookUps = 4;
  const ByPageConstants& constants = opaque(kByPage);
  const __m256i none = _mm256_setzero_si256();
  alignas(64) char16_t step[kStep + 1];  // a store across two pages takes as long as ten others
  step[kStep] = 0;                       // what is looked up where nothing is left to look up
  std::size_t looked_up = 0;
  __m256i total = none;
  std::size_t at = 0;
  for (; at + kStep <= length; at += kStep) {
    const __m256i low = Units::load(text + at).lanes;
    const __m256i high = Units::load(text + at + Units::kLanes).lanes;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(step), low);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(step + Units::kLanes), high);
    const __m256i pages = pages_of(low, high);
    const __m256i groups = _mm256_and_si256(look_up(constants.by_first, constants.first_digits(pages)),
                                            look_up(constants.by_second, constants.second_digits(pages)));
    const __m256i ascii = _mm256_cmpgt_epi8(_mm256_packus_epi16(low, high), none);
    const __m256i mixed = _mm256_andnot_si256(ascii, _mm256_cmpgt_epi8(groups, none));
    total = _mm256_sub_epi8(total, constants.all_double_byte(pages));
    total = _mm256_sub_epi8(total, _mm256_cmpgt_epi8(none, groups));
    auto left = static_cast<unsigned>(_mm256_movemask_epi8(_mm256_permute4x64_epi64(mixed, 0xD8)));
#pragma GCC unroll 8
    for (int i = 0; i < kUsualLookUps; ++i) {
      looked_up += kDoubleByte.of[step[_tzcnt_u32(left)]];
      left &= left - 1;
    }
    for (; left != 0; left &= left - 1) looked_up += kDoubleByte.of[step[_tzcnt_u32(left)]];
  }
  return {at, looked_up + Units::sum_of_bytes(total)};
}

}  // namespace

std::size_t double_byte_count_avx2(const char16_t* characters, std::size_t length) {
  constexpr std::size_t kLeast = kBlock;
  std::size_t total = 0;
  std::size_t at = 0;
  const auto count = [&](Counted counted) {
    at += counted.characters;
    total += counted.double_byte;
  };
  std::size_t patience = kLeast;  // how far to go by page before the quicker ones are tried again
  while (at < length) {
    const std::size_t before = at;
    count(scan_simple(characters + at, length - at));
    count(scan_prose(characters + at, length - at));
    patience = at != before ? kLeast : patience < kChunk ? 2 * patience : patience;
    const std::size_t end = length - at < patience ? length : at + patience;
    count(scan_by_page(characters + at, end - at));
    count(scan_by_character(characters + at, end - at));
  }
  return total;
}

}  // namespace corvelle::internal
