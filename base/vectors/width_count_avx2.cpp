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

__m256i bytes_of(int number) { return _mm256_set1_epi8(static_cast<char>(number)); }

// Hides from the compiler that a vector is constant: where registers are few, it would make the constant anew in each
// round instead of fetching it.
__m256i opaque(__m256i constant) {
  asm("" : "+m"(constant));
  return constant;
}

// A number for each hexadecimal digit, twice, since vectors look up by halves.
struct DigitTable {
  std::uint8_t of[32];  // NOLINT(modernize-avoid-c-arrays)
};

constexpr DigitTable twice(const std::uint8_t (&numbers)[16]) {  // NOLINT(modernize-avoid-c-arrays)
  DigitTable table{};
  for (int i = 0; i < 32; ++i) table.of[i] = numbers[i % 16];
  return table;
}

// Picks for each digit, a byte of 0 to 15, what `table` has for it; 0 for a byte from 128 on.
__m256i look_up(const DigitTable& table, __m256i digits) {
  return _mm256_shuffle_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(table.of)), digits);
}

// The pages 4E to 9E are double-byte throughout.
struct PageConstants {
  __m256i digit = opaque(bytes_of(0x0F));
  __m256i to_lowest = opaque(bytes_of(-128 - 0x4E));
  __m256i past_last = opaque(bytes_of(-128 + 0x9F - 0x4E));

  __m256i first_digits(__m256i bytes) const { return _mm256_and_si256(_mm256_srli_epi16(bytes, 4), digit); }
  __m256i second_digits(__m256i bytes) const { return _mm256_and_si256(bytes, digit); }
  __m256i all_double_byte(__m256i pages) const {
    return _mm256_cmpgt_epi8(past_last, _mm256_add_epi8(pages, to_lowest));
  }
};

// The upper bytes of 32 units, in the order in which packing leaves them.
__m256i pages_of(__m256i low, __m256i high) {
  return _mm256_packus_epi16(_mm256_srli_epi16(low, 8), _mm256_srli_epi16(high, 8));
}

// What prose is made of beside ASCII and Chinese characters, by the four digits of a character. Each bit stands for a
// group, all characters of some first, second, third and fourth digits, which are all double-byte:
//   1 FF01 to FF0F, 2 FF10 to FF4F, 4 3000 to 300F but 3004, 8 3010 to 3017, 16 the dashes and quotes of 2010 to 201F,
//   32 2025 and 2026, 64 00B7, 128 9F00 to 9F9F.
constexpr DigitTable kFirstDigits = twice({64, 0, 48, 12, 0, 0, 0, 0, 0, 128, 0, 0, 0, 0, 0, 3});
constexpr DigitTable kSecondDigits = twice({124, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 131});
constexpr DigitTable kThirdDigits = twice({133, 154, 162, 130, 130, 128, 128, 128, 128, 128, 0, 64, 0, 0, 0, 0});
constexpr DigitTable kFourthDigits =
    twice({158, 143, 143, 159, 155, 191, 191, 207, 151, 151, 135, 135, 151, 151, 135, 135});

[[gnu::noinline]] Counted scan_simple(const char16_t* text, std::size_t length) {
  return scan_ascii_and_chinese<Units>(text, length);
}

struct ProseConstants : PageConstants {
  __m256i lower_first =
      opaque(_mm256_broadcastsi128_si256(_mm_setr_epi8(0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15)));

  // Which of 32 units are neither Chinese characters nor of those groups, in the order in which packing leaves them.
  __m256i others(__m256i low, __m256i high) const {
    const __m256i low_apart = _mm256_shuffle_epi8(low, lower_first);
    const __m256i high_apart = _mm256_shuffle_epi8(high, lower_first);
    const __m256i pages = _mm256_unpackhi_epi64(low_apart, high_apart);
    const __m256i bytes = _mm256_unpacklo_epi64(low_apart, high_apart);
    const __m256i groups_of_page = _mm256_and_si256(look_up(kFirstDigits, first_digits(pages)),  //
                                                    look_up(kSecondDigits, second_digits(pages)));
    const __m256i groups_of_byte =
        _mm256_and_si256(look_up(kThirdDigits, first_digits(bytes)), look_up(kFourthDigits, second_digits(bytes)));
    const __m256i groups = _mm256_and_si256(groups_of_page, groups_of_byte);
    return _mm256_andnot_si256(all_double_byte(pages), _mm256_cmpeq_epi8(groups, _mm256_setzero_si256()));
  }
};

// Counts blocks of ASCII but DEL, Chinese characters, full-width forms and the punctuation of Chinese prose.
[[gnu::noinline]] Counted scan_prose(const char16_t* text, std::size_t length) {
  const ProseConstants constants;
  std::size_t narrow = 0;
  std::size_t at = 0;
  for (bool known = true; known && at + kBlock <= length;) {
    const std::size_t end = length - at < kChunk ? length : at + kChunk;
    __m256i narrow_in_lane = _mm256_setzero_si256();
    for (; at + kBlock <= end; at += kBlock) {
      const __m256i before_block = narrow_in_lane;
      __m256i highest = _mm256_setzero_si256();
#pragma GCC unroll 2
      for (std::size_t i = 0; i < kBlock; i += 2 * Units::kLanes) {
        const __m256i low = Units::load(text + at + i).lanes;
        const __m256i high = Units::load(text + at + i + Units::kLanes).lanes;
        const __m256i others = constants.others(low, high);
        narrow_in_lane = _mm256_sub_epi8(narrow_in_lane, others);
        // Packed, a unit from 0080 on is 7F, and one from 8000 on 80 or more.
        highest = _mm256_max_epu8(highest, _mm256_and_si256(others, _mm256_packs_epi16(low, high)));
      }
      known = _mm256_movemask_epi8(_mm256_adds_epu8(highest, bytes_of(1))) == 0;  // none past 7E
      if (!known) {
        narrow_in_lane = before_block;
        break;
      }
    }
    narrow += Units::sum_of_bytes(narrow_in_lane);
  }
  return {at, at - narrow};
}

// Bits for the pages of which some characters are double-byte: a page is one of them where the bits of its two digits
// have one in common. But for the pages 4E to 9E, the others have none.
constexpr DigitTable kFirstDigitOfPage = twice({1, 0, 2, 4, 0, 0, 0, 0, 0, 8, 0, 0, 0, 0, 16, 32});
constexpr DigitTable kSecondDigitOfPage = twice({23, 23, 23, 23, 19, 18, 18, 16, 16, 32, 32, 0, 0, 0, 32, 40});

// Counts blocks of any characters. Most are told by their page, or are ASCII; the others are looked up.
[[gnu::noinline]] Counted scan_by_page(const char16_t* text, std::size_t length) {
  constexpr std::size_t kStep = 2 * Units::kLanes;
  constexpr int kUsualLookUps = 6;
  const PageConstants constants;
  const __m256i none = _mm256_setzero_si256();
  char16_t step[kStep + 1];
  step[kStep] = 0;  // what is looked up where nothing is left to look up
  std::size_t looked_up = 0;
  __m256i total = none;
  std::size_t at = 0;
  for (; at + kStep <= length; at += kStep) {
    const __m256i low = Units::load(text + at).lanes;
    const __m256i high = Units::load(text + at + Units::kLanes).lanes;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(step), low);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(step + Units::kLanes), high);
    const __m256i pages = pages_of(low, high);
    total = _mm256_sub_epi8(total, constants.all_double_byte(pages));
    const __m256i ascii = _mm256_cmpgt_epi8(_mm256_packus_epi16(low, high), none);
    const __m256i mixed = _mm256_and_si256(look_up(kFirstDigitOfPage, constants.first_digits(pages)),
                                           look_up(kSecondDigitOfPage, constants.second_digits(pages)));
    const __m256i settled = _mm256_or_si256(ascii, _mm256_cmpeq_epi8(mixed, none));
    auto left = ~static_cast<unsigned>(_mm256_movemask_epi8(_mm256_permute4x64_epi64(settled, 0xD8)));
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
