#include "tests/reference/text_model.h"

#include "tests/reference/code_page.h"
#include "tests/reference/steps.h"

namespace corvelle::reference {
namespace {

// The number in decimal digits, without sign or padding.
std::u16string digits_of(std::int64_t number) {
  std::u16string digits;
  do {
    digits.insert(digits.begin(), static_cast<char16_t>(u'0' + number % 10));
    number /= 10;
  } while (number > 0);
  return digits;
}

std::u16string spaces(std::int64_t count) {
  if (count < 0) throw Error{kInvalidArgument};
  return std::u16string(static_cast<std::size_t>(count), u' ');
}

std::int16_t code_of_upper_case(std::u16string_view character) { return ansi_code(upper_case(character.front())); }

bool is_letter_code(int code) { return code >= 65 && code <= 90; }
bool is_digit_code(int code) { return code >= 48 && code <= 57; }

std::u16string plain_form(char16_t character) {
  switch (character) {
    case u'０':
    case u'零': return u"0";
    case u'１':
    case u'一': return u"1";
    case u'２':
    case u'二': return u"2";
    case u'３':
    case u'三': return u"3";
    case u'４':
    case u'四': return u"4";
    case u'５':
    case u'五': return u"5";
    case u'６':
    case u'六': return u"6";
    case u'７':
    case u'七': return u"7";
    case u'８':
    case u'八': return u"8";
    case u'９':
    case u'九': return u"9";
    case u'十': return u"10";
    case u',':
    case u'，':
    case u'、':
    case u'＼':
    case u'\\':
    case u'/':
    case u'／': return u"、";
    case u'至':
    case u'到':
    case u'－': return u"-";
    default: return std::u16string(1, character);
  }
}

}  // namespace

double sumByte_Pf(std::u16string_view vStr) {
  const Int16 n = length(vStr);
  double total = 0;
  for (Int16 p = 1; p <= n; p = p + 1) {
    const bool wide = code_of(character_at(vStr, p)) > 255 || code_of(character_at(vStr, p)) < 0;
    total += wide ? 2.0 : 1.0;
  }
  return total;
}

std::int16_t GetByte_Pf(std::u16string_view vStr, std::int16_t /*vInt*/) {
  const Int16 n = length(vStr);
  Int16 total = 0;
  for (Int16 p = 1; p <= n; p = p + 1) {
    const bool wide = code_of(character_at(vStr, p)) > 255 || code_of(character_at(vStr, p)) < 0;
    total = total + (wide ? 2 : 1);
  }
  return static_cast<std::int16_t>(total);
}

std::u16string Get_StrWidth(std::u16string_view strCon) {
  const Int16 n = length(strCon);
  Int16 total = 0;
  for (Int16 p = 1; p <= n; p = p + 1) {
    total = total + (code_of(character_at(strCon, p)) < 0 ? 2 : 1);
  }
  return digits_of(total);
}

std::u16string Set_String1(std::u16string_view strName, std::int32_t lngLen, std::int16_t Flag) {
  const std::u16string_view s = trimmed(strName);
  std::u16string r;
  Int16 w = 1;
  Int16 i = 0;
  while (true) {
    i = i + 1;
    if (i > length(s)) break;
    r += character_at(s, i);
    if (code_of(character_at(s, i)) < 0) w = w + 1;
    w = w + 1;
    if (w > lngLen) return r;
  }
  const Int32 k = lngLen - w + 1;
  return Flag == 0 ? r + spaces(k) : spaces(k) + r;
}

std::u16string Get_String(std::u16string_view strName, std::int32_t intBegin, std::int32_t LngEnd) {
  if (length(strName) < intBegin) return u"";
  Int16 p = intBegin;
  Int32 e = LngEnd;
  std::u16string r;
  do {
    const std::u16string_view c = character_at(strName, p);
    if (!trimmed(c).empty() && code_of(c) < 0) e = e - 1;
    r += c;
    p = p + 1;
  } while (p <= e);
  return r;
}

std::u16string getStr_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag) {
  Int32 t = 1;
  std::int64_t m = 0;
  Int32 q = 0;
  Int32 b = 1;
  while (true) {
    const Int32 found = find_from(Str, sFlag, t);
    if (!(found >= 1 && m != Num)) break;
    m = m + 1;
    if (m == Num) {
      q = found;
    } else {
      b = found;
    }
    t = found + 1;
  }
  const Int32 f = Num == 1 ? 1 : b + 1;
  const Int32 n = Num == 1 ? q - b : q - b - 1;
  return std::u16string(substring(Str, f, n));
}

std::u16string getStrDo_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag) {
  try {
    return getStr_Pf(Str, Num, sFlag);
  } catch (const Error&) {
    return std::u16string(sFlag);
  }
}

std::u16string Center(std::u16string_view Str) {
  if (Str.empty()) return u"";
  const Int16 n = length(Str);
  std::u16string result;
  for (Int16 p = 1; p <= n; p = p + 1) result += trimmed(character_at(Str, p));
  return result;
}

std::u16string GetStr(std::u16string_view Str) {
  const Int16 n = length(Str);
  std::u16string result;
  for (Int16 p = 1; p <= n; p = p + 1) {
    if (is_AlphaNum(character_at(Str, p))) result += character_at(Str, p);
  }
  return result;
}

bool is_AlphaNum(std::u16string_view CheckString) {
  const Int16 n = length(CheckString);
  for (Int16 i = 1; i <= n; i = i + 1) {
    if (!is_letter_code(code_of_upper_case(character_at(CheckString, i)))) return false;
  }
  return true;
}

bool Is_HuanZi(std::u16string_view CheckString) {
  const Int16 n = length(CheckString);
  for (Int16 i = 1; i <= n; i = i + 1) {
    const int code = code_of_upper_case(character_at(CheckString, i));
    if (!is_letter_code(code) && !is_digit_code(code)) return true;
  }
  return false;
}

std::u16string getNum(std::u16string_view NewStr) {
  const Int16 n = length(trimmed(NewStr));
  std::u16string result;
  for (Int16 i = 1; i <= n; i = i + 1) {
    const char16_t character = character_at(NewStr, i).front();
    if (character >= u'0' && character <= u'9') result += character;
  }
  return result;
}

std::u16string CharChange(std::u16string_view StrChar) {
  if (StrChar.empty()) return u"";
  const Int16 n = length(StrChar);
  std::u16string result;
  for (Int16 i = 1; i <= n; i = i + 1) result += plain_form(character_at(StrChar, i).front());
  return result;
}

std::u16string Get_String_PY(std::u16string_view strCon, const CharacterStep& Get_Char_PY) {
  std::u16string result;
  if (length(strCon) < 1) return u"";
  const Int16 n = length(strCon);
  for (Int16 i = 1; i <= n; i = i + 1) {
    if (code_of(character_at(strCon, i)) < 0) result += Get_Char_PY(character_at(strCon, i));
  }
  if (length(result) > 10) result = substring(result, 1, 10);
  return result;
}

std::u16string GetPath(std::u16string_view PathFile) {
  const std::u16string s = std::u16string(PathFile) + u"\\";
  const Int16 n = length(s);
  Int16 m = -1;
  for (Int16 i = 1; i <= n; i = i + 1) {
    if (character_at(s, i) == u"\\") m = m + 1;
  }
  std::u16string result;
  for (Int16 j = 1; j <= m; j = j + 1) result += getStr_Pf(s, static_cast<std::int16_t>(j), u"\\") + u"\\";
  return result;
}

std::u16string Get_Str(std::u16string_view Str, std::u16string_view Flag) {
  const std::int64_t k = length(Flag);
  const Int16 n = length(Str);
  std::u16string head;
  bool stop = false;
  for (Int16 i = 1; i <= n; i = i + 1) {
    if (substring(Str, i, k) == Flag && i != 1) stop = true;
    if (!stop) head += character_at(Str, i);
  }
  return stop ? head + std::u16string(Flag) : u"";
}

std::u16string getString_P(std::u16string_view NewStr, std::u16string_view Flag1, std::u16string_view Flag2) {
  try {
    if (trimmed(NewStr).empty() || NewStr == std::u16string(Flag1) + std::u16string(Flag2)) return u"";
    Int16 i = 1;
    bool found = false;
    std::u16string acc;
    do {
      if (substring(NewStr, i, length(Flag1)) == Flag1) {
        found = true;
        i = i + length(Flag1);
      }
      if (substring(NewStr, i, length(Flag2)) == Flag2) break;
      if (found) acc += character_at(NewStr, i);
      i = i + 1;
    } while (i <= length(NewStr));
    return acc;
  } catch (const Error&) {
    return u"";
  }
}

std::u16string Replace_Str(std::u16string_view strExpression, std::u16string_view Str1, std::u16string_view Str2) {
  std::u16string out;
  std::int64_t last = 0;
  const Int16 n = length(strExpression);
  for (Int16 i = 1; i <= n; i = i + 1) {
    if (character_at(strExpression, i) == Str1) {
      out += Str2;
      last = i;
    } else {
      out += character_at(strExpression, i);
    }
  }
  const std::u16string first_pass = out;
  out = u"";
  const Int16 new_n = length(first_pass);
  for (Int16 i = 1; i <= new_n; i = i + 1) {
    if (character_at(first_pass, i) == Str2 && i != last) {
      out += Str1;
    } else {
      out += character_at(first_pass, i);
    }
  }
  return out;
}

std::u16string ConversionStr_Long(std::u16string_view StrTmp) {
  const Int16 n = length(StrTmp);
  std::u16string result;
  for (Int16 i = 1; i <= n; i = i + 1) {
    result += character_at(StrTmp, i);
    const Int16 code = 97 + i;
    result += decoded(static_cast<std::int32_t>(code));
  }
  return result;
}

std::u16string ConversionStr_Short(std::u16string_view StrTmp) {
  const Int16 n = length(StrTmp);
  std::u16string result;
  for (Int16 i = 1; i <= n; i = i + 1) {
    if (i % 2 == 1) result += character_at(StrTmp, i);
  }
  return result;
}

}  // namespace corvelle::reference
