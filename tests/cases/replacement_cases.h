// tests/cases/replacement_cases.h - Replace_Str, ConversionStr_Long and ConversionStr_Short, for every runner.
#pragma once

#include <string>
#include <vector>

#include "tests/support/operation_case.h"

namespace corvelle::testing {

inline std::vector<OperationCase> replacement_cases() {
  using namespace std::string_view_literals;
  constexpr auto kOverflow = ErrorNumber::overflow;
  const auto repeated = [](std::size_t count, char16_t unit) { return std::u16string(count, unit); };
  // 158 characters and their fillers, all of one character.
  const std::u16string fillers_158 = u"bcdefghijklmnopqrstuvwxyz{|}~\x7F€" + repeated(126, u'?') + u"\uF8F5";
  std::u16string long_158;
  for (const char16_t filler : fillers_158) (long_158 += u'a') += filler;
  return {
      // ClsVexApp.Replace_Str: strExpression, Str1, Str2.
      {"only the last is replaced", u"ClsVexApp.Replace_Str", {text(u"a-b-c"), text(u"-"), text(u"+")}, text(u"a-b+c")},
      {"the replacement found before is turned back",
       u"ClsVexApp.Replace_Str",
       {text(u"a+b-c"), text(u"-"), text(u"+")},
       text(u"a-b+c")},
      {"the replacement found behind is turned back",
       u"ClsVexApp.Replace_Str",
       {text(u"a-b+c"), text(u"-"), text(u"+")},
       text(u"a+b-c")},
      {"without the character every replacement is turned back",
       u"ClsVexApp.Replace_Str",
       {text(u"a+b"), text(u"-"), text(u"+")},
       text(u"a-b")},
      {"two in a row", u"ClsVexApp.Replace_Str", {text(u"--"), text(u"-"), text(u"+")}, text(u"-+")},
      {"one alone", u"ClsVexApp.Replace_Str", {text(u"-"), text(u"-"), text(u"+")}, text(u"+")},
      {"the empty text", u"ClsVexApp.Replace_Str", {text(u""), text(u"-"), text(u"+")}, text(u"")},
      {"neither character in the text", u"ClsVexApp.Replace_Str", {text(u"abc"), text(u"-"), text(u"+")}, text(u"abc")},
      {"the same character twice", u"ClsVexApp.Replace_Str", {text(u"a-b-c"), text(u"-"), text(u"-")}, text(u"a-b-c")},
      {"a longer replacement stays everywhere",
       u"ClsVexApp.Replace_Str",
       {text(u"a-b"), text(u"-"), text(u"xy")},
       text(u"axyb")},
      {"a longer replacement stays at every occurrence",
       u"ClsVexApp.Replace_Str",
       {text(u"-a-"), text(u"-"), text(u"xy")},
       text(u"xyaxy")},
      {"a longer replacement that holds the character",
       u"ClsVexApp.Replace_Str",
       {text(u"a-b"), text(u"-"), text(u"--")},
       text(u"a--b")},
      {"an empty replacement removes every occurrence",
       u"ClsVexApp.Replace_Str",
       {text(u"-a-b-"), text(u"-"), text(u"")},
       text(u"ab")},
      {"a longer text is never found, but comes in for the replacement",
       u"ClsVexApp.Replace_Str",
       {text(u"a-b"), text(u"xy"), text(u"-")},
       text(u"axyb")},
      {"a longer text in the expression is not found",
       u"ClsVexApp.Replace_Str",
       {text(u"axyb"), text(u"xy"), text(u"-")},
       text(u"axyb")},
      {"an empty text is never found", u"ClsVexApp.Replace_Str", {text(u"abc"), text(u""), text(u"-")}, text(u"abc")},
      {"an empty text comes in for the replacement",
       u"ClsVexApp.Replace_Str",
       {text(u"a-b-"), text(u""), text(u"-")},
       text(u"ab")},
      {"two longer texts change nothing",
       u"ClsVexApp.Replace_Str",
       {text(u"abcd"), text(u"ab"), text(u"cd")},
       text(u"abcd")},
      {"two empty texts change nothing", u"ClsVexApp.Replace_Str", {text(u"abc"), text(u""), text(u"")}, text(u"abc")},
      {"an empty and a longer text change nothing",
       u"ClsVexApp.Replace_Str",
       {text(u"abc"), text(u""), text(u"bc")},
       text(u"abc")},
      {"case counts", u"ClsVexApp.Replace_Str", {text(u"xXx"), text(u"x"), text(u"y")}, text(u"xXy")},
      {"Chinese characters",
       u"ClsVexApp.Replace_Str",
       {text(u"一、二、三"), text(u"、"), text(u"和")},
       text(u"一、二和三")},
      {"NUL and lone surrogates",
       u"ClsVexApp.Replace_Str",
       {text(u"\0a\0\xD800"sv), text(u"\0"sv), text(u"\xD800")},
       text(u"\0a\xD800\0"sv)},
      {"32,766 characters can be walked twice",
       u"ClsVexApp.Replace_Str",
       {text(repeated(32766, u'-')), text(u"-"), text(u"+")},
       text(repeated(32765, u'-') + u"+")},
      {"the step past 32,767 characters overflows",
       u"ClsVexApp.Replace_Str",
       {text(repeated(32767, u'a')), text(u"-"), text(u"+")},
       kOverflow},
      {"above 32,767 characters too",
       u"ClsVexApp.Replace_Str",
       {text(repeated(32768, u'a')), text(u"-"), text(u"+")},
       kOverflow},
      {"the first pass may make 32,766 characters",
       u"ClsVexApp.Replace_Str",
       {text(repeated(32764, u'a') + u"-"), text(u"-"), text(u"xy")},
       text(repeated(32764, u'a') + u"xy")},
      {"the second pass overflows at 32,767 characters",
       u"ClsVexApp.Replace_Str",
       {text(repeated(32765, u'a') + u"-"), text(u"-"), text(u"xy")},
       kOverflow},
      {"the second pass overflows before any memory is asked for",
       u"ClsVexApp.Replace_Str",
       {text(repeated(32766, u'-')), text(u"-"), text(repeated(70000, u'x'))},
       kOverflow},
      {"what the second pass makes is not walked again",
       u"ClsVexApp.Replace_Str",
       {text(repeated(32766, u'-')), text(u"xy"), text(u"-")},
       [&] {
         std::u16string result;
         for (int i = 0; i < 32766; ++i) result += u"xy";
         return text(result);
       }()},

      // ClsVexApp.ConversionStr_Long: StrTmp.
      {"fillers begin with b", u"ClsVexApp.ConversionStr_Long", {text(u"abc")}, text(u"abbccd")},
      {"the empty text stays empty", u"ClsVexApp.ConversionStr_Long", {text(u"")}, text(u"")},
      {"one character", u"ClsVexApp.ConversionStr_Long", {text(u"中")}, text(u"中b")},
      {"the fillers up to position 30",
       u"ClsVexApp.ConversionStr_Long",
       {text(repeated(30, u'a'))},
       text(long_158.substr(0, 60))},
      {"the filler at 31 is the euro sign, at 32 a question mark",
       u"ClsVexApp.ConversionStr_Long",
       {text(repeated(32, u'a'))},
       text(long_158.substr(0, 64))},
      {"the filler at 158 is the last of one character",
       u"ClsVexApp.ConversionStr_Long",
       {text(repeated(158, u'a'))},
       text(long_158)},
      {"the filler at 159 is two characters",
       u"ClsVexApp.ConversionStr_Long",
       {text(repeated(160, u'a'))},
       text(long_158 + std::u16string(u"a\x1\0a\x1\x1"sv))},
      {"NUL and lone surrogates are filled like others",
       u"ClsVexApp.ConversionStr_Long",
       {text(u"\0\xD800"sv)},
       text(u"\0b\xD800"
            u"c"sv)},
      {"code 97 + 32,671 overflows", u"ClsVexApp.ConversionStr_Long", {text(repeated(32671, u'a'))}, kOverflow},
      {"32,767 characters overflow", u"ClsVexApp.ConversionStr_Long", {text(repeated(32767, u'a'))}, kOverflow},
      {"32,768 characters overflow", u"ClsVexApp.ConversionStr_Long", {text(repeated(32768, u'a'))}, kOverflow},

      // ClsVexApp.ConversionStr_Short: StrTmp.
      {"the odd positions stay", u"ClsVexApp.ConversionStr_Short", {text(u"abbccd")}, text(u"abc")},
      {"a last odd position stays", u"ClsVexApp.ConversionStr_Short", {text(u"abc")}, text(u"ac")},
      {"the empty text stays empty", u"ClsVexApp.ConversionStr_Short", {text(u"")}, text(u"")},
      {"one character", u"ClsVexApp.ConversionStr_Short", {text(u"中")}, text(u"中")},
      {"NUL and lone surrogates",
       u"ClsVexApp.ConversionStr_Short",
       {text(u"\0a\xD800"
             u"b\xDC00"sv)},
       text(u"\0\xD800\xDC00"sv)},
      {"32,766 characters can be walked",
       u"ClsVexApp.ConversionStr_Short",
       {text(repeated(32766, u'a'))},
       text(repeated(16383, u'a'))},
      {"the step past 32,767 characters overflows",
       u"ClsVexApp.ConversionStr_Short",
       {text(repeated(32767, u'a'))},
       kOverflow},
      {"above 32,767 characters too", u"ClsVexApp.ConversionStr_Short", {text(repeated(32768, u'a'))}, kOverflow},
  };
}

}  // namespace corvelle::testing
