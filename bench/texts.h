// bench/texts.h - the texts that benchmarks measure: the kinds that hosts send, at any length.
#pragma once

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace corvelle::bench {

inline constexpr std::size_t kLongest = 32766;

inline constexpr std::u16string_view kWords = u"hex bolt M8 x 40 zinc plated 200 pcs ";
inline constexpr std::u16string_view kGoods = u"六角螺栓 M8×40 镀锌 二百件、十箱 ";
inline constexpr std::u16string_view kProse = u"三月一日至五日，仓库共发出钢板二十张，合计１２吨；";
inline constexpr std::u16string_view kDates = u"2024-02-29 ";

// `sample` again and again, `length` characters in all.
inline std::u16string repeated(std::u16string_view sample, std::size_t length) {
  std::u16string text;
  while (text.size() < length) text += sample;
  text.resize(length);
  return text;
}

inline char16_t ascii(std::mt19937& random) { return static_cast<char16_t>(u' ' + random() % 95); }
inline char16_t chinese(std::mt19937& random) { return static_cast<char16_t>(u'一' + random() % 20902); }

inline void append_ascii(std::u16string& text, std::mt19937& random) { text += ascii(random); }
inline void append_chinese(std::u16string& text, std::mt19937& random) { text += chinese(random); }
inline void append_any_unit(std::u16string& text, std::mt19937& random) { text += static_cast<char16_t>(random()); }

// Goods names: runs of either kind, of 1 to 8 characters.
inline void append_mixed(std::u16string& text, std::mt19937& random) {
  const auto character = random() % 2 == 0 ? ascii : chinese;
  for (auto left = 1 + random() % 8; left > 0; --left) text += character(random);
}

// A clause of 2 to 12 characters and a mark, every eighth one in quotes or with full-width digits.
inline void append_prose(std::u16string& text, std::mt19937& random) {
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

inline constexpr std::array kKinds = {Kind{"ASCII", append_ascii}, Kind{"Chinese", append_chinese},
                                      Kind{"mixed", append_mixed}, Kind{"prose", append_prose},
                                      Kind{"random units", append_any_unit}};

// The same text in every run.
inline std::u16string text_of(const Kind& kind, std::size_t length) {
  std::mt19937 random(20240229);
  std::u16string text;
  while (text.size() < length) kind.append(text, random);
  text.resize(length);
  return text;
}

}  // namespace corvelle::bench
