// tests/reference/text_operations.h - the text operations step by step, a character and a counter at a time.
//
// Slow and obvious, and sharing nothing with the product but its errors: what random tests compare it with.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/errors.h"

namespace corvelle::reference {

using String = std::u16string;

// Whether a character takes two columns.
using TwoColumns = std::function<bool(char16_t)>;

String Set_String1(const String& strName, std::int32_t lngLen, std::int16_t Flag, const TwoColumns& two_columns);
String Get_String(const String& strName, std::int32_t intBegin, std::int32_t LngEnd, const TwoColumns& two_columns);
String getStr_Pf(const String& Str, std::int16_t Num, const String& sFlag);
String getStrDo_Pf(const String& Str, std::int16_t Num, const String& sFlag);
String Center(const String& Str);
String getNum(const String& NewStr);
String GetPath(const String& PathFile);
String Get_Str(const String& Str, const String& Flag);
String getString_P(const String& NewStr, const String& Flag1, const String& Flag2);
String Replace_Str(const String& strExpression, const String& Str1, const String& Str2);
String ConversionStr_Short(const String& StrTmp);

}  // namespace corvelle::reference
