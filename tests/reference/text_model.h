// tests/reference/text_model.h - every text operation, step by step: slow, literal, and independent of the product.
//
// A second opinion: no table, no helper and no cleverness is shared with the operations themselves. Errors are
// reference::Error.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace corvelle::reference {

double sumByte_Pf(std::u16string_view vStr);
std::int16_t GetByte_Pf(std::u16string_view vStr, std::int16_t vInt);
std::u16string Get_StrWidth(std::u16string_view strCon);

std::u16string Set_String1(std::u16string_view strName, std::int32_t lngLen, std::int16_t Flag);
std::u16string Get_String(std::u16string_view strName, std::int32_t intBegin, std::int32_t LngEnd);
std::u16string getStr_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag);
std::u16string getStrDo_Pf(std::u16string_view Str, std::int16_t Num, std::u16string_view sFlag);
std::u16string Center(std::u16string_view Str);
std::u16string GetStr(std::u16string_view Str);

bool is_AlphaNum(std::u16string_view CheckString);
bool Is_HuanZi(std::u16string_view CheckString);
std::u16string getNum(std::u16string_view NewStr);
std::u16string CharChange(std::u16string_view StrChar);

// The piece that stands for a double-byte character.
using CharacterStep = std::function<std::u16string(std::u16string_view)>;
std::u16string Get_String_PY(std::u16string_view strCon, const CharacterStep& Get_Char_PY);

std::u16string GetPath(std::u16string_view PathFile);
std::u16string Get_Str(std::u16string_view Str, std::u16string_view Flag);
std::u16string getString_P(std::u16string_view NewStr, std::u16string_view Flag1, std::u16string_view Flag2);
std::u16string Replace_Str(std::u16string_view strExpression, std::u16string_view Str1, std::u16string_view Str2);
std::u16string ConversionStr_Long(std::u16string_view StrTmp);
std::u16string ConversionStr_Short(std::u16string_view StrTmp);

}  // namespace corvelle::reference
