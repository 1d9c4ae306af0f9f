#include "tests/reference/text_operations.h"

namespace corvelle::reference {
namespace {

[[noreturn]] void fail(ErrorNumber number) { throw RuntimeError(number, u"reference"); }

// An integer of which every new value is checked against its bounds.
class Counter {
 public:
  static Counter of_16_bits(std::int64_t value) { return {value, 15}; }
  static Counter of_32_bits(std::int64_t value) { return {value, 31}; }

  void add(std::int64_t step) { set(value_ + step); }
  operator std::int64_t() const { return value_; }  // NOLINT(google-explicit-constructor): it counts

 private:
  Counter(std::int64_t value, int bits) : bound_(std::int64_t{1} << bits) { set(value); }
  void set(std::int64_t value) {
    if (value < -bound_ || value >= bound_) fail(ErrorNumber::overflow);
    value_ = value;
  }

  std::int64_t bound_;
  std::int64_t value_ = 0;
};

std::int64_t length_of(const String& text) { return static_cast<std::int64_t>(text.size()); }

String middle(const String& text, std::int64_t position, std::int64_t length) {
  if (position < 1 || length < 0) fail(ErrorNumber::invalid_argument);
  String result;
  for (std::int64_t i = position; i < position + length && i <= length_of(text); ++i) {
    result += text[static_cast<std::size_t>(i - 1)];
  }
  return result;
}

String trimmed(String text) {
  while (!text.empty() && text.front() == u' ') text.erase(0, 1);
  while (!text.empty() && text.back() == u' ') text.pop_back();
  return text;
}

std::int64_t position_of(const String& text, const String& wanted, std::int64_t start) {
  for (std::int64_t i = start; i <= length_of(text); ++i) {
    if (middle(text, i, length_of(wanted)) == wanted) return i;
  }
  return 0;
}

// Calls `step` for each position of `text`, counted in 16 bits.
void walk(const String& text, const std::function<void(std::int64_t, char16_t)>& step) {
  const Counter length = Counter::of_16_bits(length_of(text));
  for (Counter i = Counter::of_16_bits(1); i <= length; i.add(1)) step(i, text[static_cast<std::size_t>(i - 1)]);
}

}  // namespace

String Set_String1(const String& strName, std::int32_t lngLen, std::int16_t Flag, const TwoColumns& two_columns) {
  const String s = trimmed(strName);
  String r;
  Counter w = Counter::of_16_bits(1);
  Counter i = Counter::of_16_bits(0);
  for (;;) {
    i.add(1);
    if (i > length_of(s)) break;
    const char16_t character = s[static_cast<std::size_t>(i - 1)];
    r += character;
    if (two_columns(character)) w.add(1);
    w.add(1);
    if (w > lngLen) return r;
  }
  const std::int64_t spaces = std::int64_t{lngLen} - w + 1;
  if (spaces < 0) fail(ErrorNumber::invalid_argument);
  const String padding(static_cast<std::size_t>(spaces), u' ');
  return Flag == 0 ? r + padding : padding + r;
}

String Get_String(const String& strName, std::int32_t intBegin, std::int32_t LngEnd, const TwoColumns& two_columns) {
  if (length_of(strName) < intBegin) return {};
  Counter p = Counter::of_16_bits(intBegin);
  Counter e = Counter::of_32_bits(LngEnd);
  String r;
  do {
    const String c = middle(strName, p, 1);
    if (!trimmed(c).empty() && two_columns(c[0])) e.add(-1);
    r += c;
    p.add(1);
  } while (p <= e);
  return r;
}

String getStr_Pf(const String& Str, std::int16_t Num, const String& sFlag) {
  Counter t = Counter::of_32_bits(1);
  Counter b = Counter::of_32_bits(1);
  std::int64_t m = 0;
  std::int64_t q = 0;
  for (std::int64_t at = position_of(Str, sFlag, t); at >= 1 && m != Num; at = position_of(Str, sFlag, t)) {
    ++m;
    if (m == Num) {
      q = at;
    } else {
      b = Counter::of_32_bits(at);
    }
    t = Counter::of_32_bits(at);
    t.add(1);
  }
  Counter behind = b;
  behind.add(1);
  return Num == 1 ? middle(Str, 1, q - b) : middle(Str, behind, q - b - 1);
}

String getStrDo_Pf(const String& Str, std::int16_t Num, const String& sFlag) {
  try {
    return getStr_Pf(Str, Num, sFlag);
  } catch (const RuntimeError&) {
    return sFlag;
  }
}

String Center(const String& Str) {
  String result;
  walk(Str, [&](std::int64_t, char16_t character) { result += trimmed(String(1, character)); });
  return result;
}

String getNum(const String& NewStr) {
  String result;
  walk(trimmed(NewStr), [&](std::int64_t i, char16_t) {
    const char16_t character = NewStr[static_cast<std::size_t>(i - 1)];
    if (character >= u'0' && character <= u'9') result += character;
  });
  return result;
}

String GetPath(const String& PathFile) {
  const String s = PathFile + u"\\";
  Counter m = Counter::of_16_bits(-1);
  walk(s, [&](std::int64_t, char16_t character) { m.add(character == u'\\' ? 1 : 0); });
  String result;
  for (Counter j = Counter::of_16_bits(1); j <= m; j.add(1)) {
    result += getStr_Pf(s, static_cast<std::int16_t>(j), u"\\") + u"\\";
  }
  return result;
}

String Get_Str(const String& Str, const String& Flag) {
  String head;
  bool stop = false;
  walk(Str, [&](std::int64_t i, char16_t character) {
    if (middle(Str, i, length_of(Flag)) == Flag && i != 1) stop = true;
    if (!stop) head += character;
  });
  return stop ? head + Flag : String();
}

String getString_P(const String& NewStr, const String& Flag1, const String& Flag2) {
  try {
    if (trimmed(NewStr).empty() || NewStr == Flag1 + Flag2) return {};
    Counter i = Counter::of_16_bits(1);
    bool found = false;
    String acc;
    do {
      if (middle(NewStr, i, length_of(Flag1)) == Flag1) {
        found = true;
        i.add(length_of(Flag1));
      }
      if (middle(NewStr, i, length_of(Flag2)) == Flag2) break;
      if (found) acc += middle(NewStr, i, 1);
      i.add(1);
    } while (i <= length_of(NewStr));
    return acc;
  } catch (const RuntimeError&) {
    return {};
  }
}

String Replace_Str(const String& strExpression, const String& Str1, const String& Str2) {
  String first_pass;
  std::int64_t last = 0;
  walk(strExpression, [&](std::int64_t i, char16_t character) {
    if (String(1, character) == Str1) {
      first_pass += Str2;
      last = i;
    } else {
      first_pass += character;
    }
  });
  String result;
  walk(first_pass, [&](std::int64_t i, char16_t character) {
    result += String(1, character) == Str2 && i != last ? Str1 : String(1, character);
  });
  return result;
}

String ConversionStr_Short(const String& StrTmp) {
  String result;
  walk(StrTmp, [&](std::int64_t i, char16_t character) {
    if (i % 2 == 1) result += character;
  });
  return result;
}

}  // namespace corvelle::reference
