#include "tests/reference/arguments.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvelle::testing {
namespace {

// Lengths on both sides of what operations or vector code count in: 8, 10, 16, 30, 64, 158 (where a filler's code
// passes 255) and so on.
constexpr int kBounds[] = {0,  1,  2,  7,  8,  9,  10,  11,  15,  16,  17,  29,  30,  31,  32,  33,
                           47, 48, 49, 63, 64, 65, 127, 128, 129, 157, 158, 159, 255, 256, 257, 300};
constexpr int kLongBounds[] = {16383, 16384, 32670, 32671, 32764, 32765, 32766,
                               32766, 32766, 32767, 32767, 32768, 32769, 40000};

// The least whole number that a double rounds to infinity: 2^1024 - 2^970.
constexpr std::u16string_view kInfinity =
    u"1797693134862315807937289714053034150799341327100378269361737789804449682927647509466490179775872070"
    u"9633028641669288791094655554785194040263065748867150582068190890200070838367627385484581771153176447"
    u"5730270069855571366959622842914819860834936475292719074168444365510704342711559699508093042880177904"
    u"174497792";

// What a text is mostly made of, so that it has a chance to be all letters or all digits.
constexpr std::u16string_view kPalettes[] = {
    u"abcxyzABCXYZ",
    u"aZ09",
    u"0123456789 ",
    u" ",
    u"ab",
    u"a,|\\ ",
    u"中文字宽度测量",
    u"a中b文 ",
    u"０１２３４５６７８９零一二三四五六七八九十,，、＼\\/／至到－",
    u"年月日-/.",
    u"[]{}=;:.,",
    u"ÐðÝýÞþ¹²³ªºıſµÉ",  // written as letters and digits, or nearly
    u"€£¥·¢¦\u00A0\u00AD　",
    u"ａｚＡＺ！～",
};

constexpr char16_t kSpecial[] = {0x0000, 0x0001, 0x0009, 0x007F, 0x0080, 0x00FF, 0x3000, 0xD7FF,
                                 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xE864, 0xE865, 0xF8F5,
                                 0xF900, 0xFA2D, 0xFEFF, 0xFFFD, 0xFFFE, 0xFFFF};

char16_t unit_between(Choices& choices, char16_t first, char16_t last) {
  return static_cast<char16_t>(choices.between(first, last));
}

char16_t any_unit(Choices& choices) {
  switch (choices.below(10)) {
    case 0: return unit_between(choices, 0x20, 0x7E);
    case 1: return unit_between(choices, 0x00, 0xFF);
    case 2:
    case 3: return unit_between(choices, 0x4E00, 0x9FFF);
    case 4: return unit_between(choices, 0xFF00, 0xFFEF);
    case 5: return unit_between(choices, 0xD800, 0xDFFF);
    case 6: return unit_between(choices, 0xE000, 0xFAFF);
    case 7: return choices.one_of(kSpecial);
    case 8: return choices.one_of(choices.one_of(kPalettes));
    default: return static_cast<char16_t>(choices.below(0x10000));
  }
}

constexpr auto kAnyPalette = static_cast<std::uint32_t>(std::size(kPalettes));

// A unit of the palette of this number; from kAnyPalette on, any unit.
char16_t unit_of(Choices& choices, std::uint32_t palette) {
  return palette < kAnyPalette ? choices.one_of(kPalettes[palette]) : any_unit(choices);
}

std::size_t any_length(Choices& choices) {
  switch (choices.below(16)) {
    case 0: return static_cast<std::size_t>(choices.one_of(kBounds));
    case 1: return choices.below(300);
    case 2:
      return static_cast<std::size_t>(choices.once_in(16) ? choices.one_of(kLongBounds) : choices.one_of(kBounds));
    case 3:
    case 4:
    case 5:
    case 6: return choices.below(41);
    default: return choices.below(9);
  }
}

std::u16string units(Choices& choices, std::uint32_t palette, std::size_t length) {
  std::u16string result(length, u' ');
  for (char16_t& unit : result) unit = unit_of(choices, palette);
  return result;
}

// `length` units: a piece over and over, and a few units of any kind in between.
std::u16string repeated(Choices& choices, std::uint32_t palette, std::size_t length) {
  const std::u16string piece = units(choices, palette, 1 + choices.below(12));
  std::u16string result(length, u' ');
  for (std::size_t i = 0; i < length; ++i) result[i] = piece[i % piece.size()];
  if (length == 0) return result;
  for (std::uint32_t left = choices.below(4); left > 0; --left) {
    const auto near_an_end = choices.below(static_cast<std::uint32_t>(std::min<std::size_t>(length, 8)));
    const std::size_t places[] = {near_an_end, length - 1 - near_an_end,
                                  choices.below(static_cast<std::uint32_t>(length))};
    result[choices.one_of(places)] = unit_of(choices, choices.once_in(2) ? palette : kAnyPalette);
  }
  return result;
}

void surround_by_spaces(Choices& choices, std::u16string& text) {
  for (std::uint32_t left = choices.below(4); left > 0; --left) {
    if (!text.empty()) (choices.once_in(2) ? text.front() : text.back()) = u' ';
    text.insert(choices.once_in(2) ? 0 : text.size(), 1, u' ');
  }
}

// `number`, or the nearest that the type holds.
template <class Integer>
Integer as(std::int64_t number) {
  return static_cast<Integer>(
      std::clamp<std::int64_t>(number, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()));
}

constexpr std::int64_t kEnds[] = {0, 32766, -32768, 65536, -65536, 40000, -40000};

// A number near one that an operation might take a decision by.
std::int64_t near_a_bound(Choices& choices, std::size_t length) {
  const std::int64_t offset = choices.between(-2, 2);
  switch (choices.below(16)) {
    case 0: return choices.one_of(kEnds) + offset;
    case 1:
    case 2: return -static_cast<std::int64_t>(choices.below(5));
    case 3:
    case 4:
    case 5: return static_cast<std::int64_t>(length) + offset;
    case 6: return static_cast<std::int64_t>(2 * length) + offset;
    case 7: return choices.between(0, 400);
    default: return choices.between(0, 12);
  }
}

// The number that rounds to infinity or one next to it, written in one of several ways.
std::u16string near_infinity(Choices& choices) {
  std::u16string digits(kInfinity);
  if (choices.once_in(2)) --digits.back();
  if (choices.once_in(4)) digits[choices.below(static_cast<std::uint32_t>(digits.size()))] = u'7';
  const auto point = 1 + choices.below(static_cast<std::uint32_t>(digits.size()));
  std::u16string result(choices.below(3), u'0');
  result += std::u16string_view(digits).substr(0, point);
  result += u'.';
  result += std::u16string_view(digits).substr(point);
  result += u'e';
  for (const char digit : std::to_string(digits.size() - point)) result += static_cast<char16_t>(digit);
  return result;
}

}  // namespace

std::u16string any_text(Choices& choices) {
  const auto palette = choices.below(kAnyPalette + 4);
  const std::size_t length = any_length(choices);
  std::u16string result =
      length <= 64 && !choices.once_in(4) ? units(choices, palette, length) : repeated(choices, palette, length);
  if (choices.once_in(8)) surround_by_spaces(choices, result);
  return result;
}

std::u16string separator(Choices& choices, std::u16string_view text) {
  const auto place = [&] { return choices.below(static_cast<std::uint32_t>(text.size()) + 1); };
  switch (choices.below(16)) {
    case 0: return {};
    case 1: return any_text(choices);
    case 2: return std::u16string(text);
    case 3: return std::u16string(text) + any_unit(choices);
    case 4: return std::u16string(2, text.empty() ? u',' : text.front());
    case 5:
    case 6: return std::u16string(text.substr(place(), 2));
    case 7: return std::u16string(text.substr(place(), choices.below(8)));
    case 8: return std::u16string(1, any_unit(choices));
    case 9: return std::u16string(text.substr(0, 1 + choices.below(2)));
    case 10: return std::u16string(text.substr(text.size() - std::min<std::size_t>(text.size(), 1 + choices.below(2))));
    default: return std::u16string(text.substr(place(), 1));
  }
}

std::u16string path(Choices& choices) {
  std::u16string result = any_text(choices);
  if (result.size() > 2000) {
    std::uint32_t folders = choices.below(8);
    for (char16_t& unit : result) {
      if (unit == u'\\' && (folders == 0 || --folders == 0)) unit = u'x';
    }
  }
  for (std::uint32_t left = result.empty() ? 0 : choices.below(6); left > 0; --left) {
    result[choices.below(static_cast<std::uint32_t>(result.size()))] = u'\\';
  }
  return result;
}

std::u16string numeric_text(Choices& choices) {
  static constexpr std::u16string_view kBlanks[] = {u"", u"", u"", u"", u"", u" ", u"  ", u"\t", u"\u00A0", u"　"};
  static constexpr std::u16string_view kSigns[] = {u"",  u"",  u"",  u"",   u"-",  u"-",
                                                   u"+", u"(", u"$", u"-(", u"- ", u"￥"};
  static constexpr std::u16string_view kTrailers[] = {u"",  u"",  u"",   u"",  u"",  u"-",  u"+",
                                                      u")", u"$", u" -", u"%", u",", u",5", u")-"};
  static constexpr char16_t kDigits[] = u"0123456789499950055";
  static constexpr std::u16string_view kExponents[] = {u"e", u"E", u"e+", u"e-", u"E-", u"e0", u"e+-", u"e,", u"d"};
  static constexpr int kSizes[] = {0, 1, 3, 4, 5, 7, 8, 9, 10, 17, 99, 307, 308, 309, 310, 323, 324, 400, 99999};
  const auto digits = [&](std::uint32_t most) {
    std::u16string result;
    for (std::uint32_t left = choices.below(most + 1); left > 0; --left) {
      result += kDigits[choices.below(static_cast<std::uint32_t>(std::size(kDigits) - 1))];
      if (choices.once_in(40)) result += u',';
    }
    return result;
  };
  const auto exponent = [&] {
    std::u16string result(choices.one_of(kExponents));
    for (const char digit : std::to_string(choices.one_of(kSizes))) result += static_cast<char16_t>(digit);
    return result;
  };
  if (choices.once_in(16)) return any_text(choices);
  if (choices.once_in(64)) return near_infinity(choices);
  std::u16string result(choices.one_of(kBlanks));
  result += choices.one_of(kSigns);
  result += choices.one_of(kBlanks);
  result += digits(choices.once_in(64) ? 330 : 12);
  if (!choices.once_in(4)) result += u'.' + digits(choices.once_in(64) ? 330 : 12);
  if (choices.once_in(4)) result += exponent();
  result += choices.one_of(kTrailers);
  result += choices.one_of(kBlanks);
  if (choices.once_in(24) && !result.empty()) {
    result[choices.below(static_cast<std::uint32_t>(result.size()))] = any_unit(choices);
  }
  return result;
}

std::int16_t any_int16(Choices& choices, std::size_t length) {
  if (choices.once_in(16)) return as<std::int16_t>(choices.between(-32768, 32767));
  return as<std::int16_t>(near_a_bound(choices, length));
}

std::int32_t any_int32(Choices& choices, std::size_t length) {
  if (choices.once_in(32)) {
    const std::int64_t offset = choices.below(3);
    return as<std::int32_t>(choices.once_in(2) ? std::numeric_limits<std::int32_t>::min() + offset
                                               : std::numeric_limits<std::int32_t>::max() - offset);
  }
  return as<std::int32_t>(near_a_bound(choices, length));
}

double any_date(Choices& choices) {
  constexpr std::int64_t kFirst = -657434;
  constexpr std::int64_t kLast = 2958465;
  static constexpr double kFractions[] = {0, 0.25, 0.5, 0.999, 0.99999, 0.999999999, 0.00000001};
  static constexpr double kOdd[] = {0.0,
                                    -0.0,
                                    std::numeric_limits<double>::infinity(),
                                    -std::numeric_limits<double>::infinity(),
                                    std::numeric_limits<double>::quiet_NaN(),
                                    std::numeric_limits<double>::max(),
                                    std::numeric_limits<double>::lowest(),
                                    std::numeric_limits<double>::denorm_min(),
                                    2147483648.0,
                                    -2147483649.0,
                                    9.3e18,
                                    1e300};
  if (choices.once_in(32)) return choices.one_of(kOdd);
  double day = static_cast<double>(choices.between(kFirst, kLast));
  if (choices.once_in(8)) {
    constexpr std::int64_t kNear[] = {kFirst, kLast, 0};
    day = static_cast<double>(choices.one_of(kNear) + choices.between(-3, 3));
  }
  const double fraction = choices.one_of(kFractions);
  const double date = day < 0 ? day - fraction : day + fraction;
  switch (choices.below(8)) {
    case 0: return std::nextafter(date, std::numeric_limits<double>::infinity());
    case 1: return std::nextafter(date, -std::numeric_limits<double>::infinity());
    default: return date;
  }
}

}  // namespace corvelle::testing
