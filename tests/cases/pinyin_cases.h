// tests/cases/pinyin_cases.h - Get_String_PY, for every runner.
#pragma once

#include <string>
#include <vector>

#include "tests/support/operation_case.h"

namespace corvelle::testing {

inline std::vector<OperationCase> pinyin_cases() {
  using namespace std::string_view_literals;
  constexpr auto kOverflow = ErrorNumber::overflow;
  const auto repeated = [](std::size_t count, char16_t unit) { return text(std::u16string(count, unit)); };
  return {
      {"the empty text has no code", u"Get_String_PY", {text(u"")}, text(u"")},
      {"Chinese characters contribute empty pieces", u"Get_String_PY", {text(u"中文abc")}, text(u"")},
      {"letters are dropped, not copied", u"Get_String_PY", {text(u"ABC")}, text(u"")},
      {"more than ten Chinese characters", u"Get_String_PY", {text(u"中华人民共和国万岁万岁")}, text(u"")},
      {"NUL and lone surrogates are dropped", u"Get_String_PY", {text(u"\0\xD800"sv)}, text(u"")},
      {"32,766 Chinese characters can be walked", u"Get_String_PY", {repeated(32766, u'中')}, text(u"")},
      {"the step past 32,767 characters overflows", u"Get_String_PY", {repeated(32767, u'a')}, kOverflow},
      {"above 32,767 characters too", u"Get_String_PY", {repeated(32768, u'a')}, kOverflow},
  };
}

}  // namespace corvelle::testing
