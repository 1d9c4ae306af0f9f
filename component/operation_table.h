// component/operation_table.h - the published operations of both interfaces, in vtable order.
//
// The single source of every DISPID, name, default and help text. DISPIDs never change; their gaps are published too.
#pragma once

#include "component/interfaces.h"
#include "component/operation.h"
#include "datenum/date_text.h"

namespace corvelle {

inline constexpr BstrConstant<kDefaultDateMarks.size()> kDefaultDateTemplate(kDefaultDateMarks);

inline constexpr std::array kClsValidateOperations = interface_of(
    operation<&_ClsValidate::sumByte_Pf>(0x6003001E, u"sumByte_Pf", "Display width of a text in columns, as a double.",
                                         in(u"vStr")),
    operation<&_ClsValidate::GetByte_Pf>(0x6003001F, u"GetByte_Pf",
                                         "Display width of a text in columns, as a 16-bit integer; vInt is ignored.",
                                         in(u"vStr"), in(u"vInt")),
    operation<&_ClsValidate::getStr_Pf>(0x60030020, u"getStr_Pf",
                                        "Field Num of a text whose fields each end with the separator sFlag.",
                                        in(u"Str"), in(u"Num"), in(u"sFlag")),
    operation<&_ClsValidate::getStrDo_Pf>(0x60030021, u"getStrDo_Pf",
                                          "As getStr_Pf, but gives sFlag where that ends in an error.", in(u"Str"),
                                          in(u"Num"), in(u"sFlag")),
    operation<&_ClsValidate::Center>(0x60030024, u"Center", "The text with every space removed.", in(u"Str")),
    operation<&_ClsValidate::GetStr>(0x60030025, u"GetStr", "The characters that is_AlphaNum accepts, in their order.",
                                     in(u"Str")),
    operation<&_ClsValidate::is_AlphaNum, VT_BOOL>(0x60030026, u"is_AlphaNum",
                                                   "Whether every character is an ASCII letter.", in(u"CheckString")),
    operation<&_ClsValidate::getNum>(0x60030027, u"getNum", "The digits of a text, in their order.", in(u"NewStr")),
    operation<&_ClsValidate::Is_HuanZi, VT_BOOL>(0x60030028, u"Is_HuanZi",
                                                 "Whether any character is neither an ASCII letter nor an ASCII digit.",
                                                 in(u"CheckString")),
    operation<&_ClsValidate::GetPath>(0x60030029, u"GetPath", "A path up to and including its last backslash.",
                                      in(u"PathFile")),
    operation<&_ClsValidate::Get_Str>(0x6003002A, u"Get_Str",
                                      "The text up to and including the first Flag that is not at its start.",
                                      in(u"Str"), in(u"Flag")),
    operation<&_ClsValidate::CharChange>(
        0x6003002C, u"CharChange", "Chinese numerals, full-width digits and separators in plain form.", in(u"StrChar")),
    operation<&_ClsValidate::getString_P>(0x6003002E, u"getString_P", "The text between Flag1 and the next Flag2.",
                                          in(u"NewStr"), in(u"Flag1"), in(u"Flag2")),
    operation<&_ClsValidate::Get_String>(0x6003002F, u"Get_String",
                                         "The characters from position intBegin on, up to column LngEnd.",
                                         in(u"strName"), in(u"intBegin"), in(u"LngEnd")),
    operation<&_ClsValidate::Set_String1>(0x60030030, u"Set_String1",
                                          "A text padded or cut to lngLen columns; Flag other than 0 aligns right.",
                                          in(u"strName"), in(u"lngLen"), in(u"Flag", 0)),
    operation<&_ClsValidate::File_Find, VT_BOOL>(
        0x60030031, u"File_Find", "Whether a path or pattern matches an ordinary file.", in(u"FilePath")),
    operation<&_ClsValidate::IFTable, VT_BOOL>(0x60030032, u"IFTable", "Whether a database has a table of that name.",
                                               in(u"DB"), in(u"TableName")),
    operation<&_ClsValidate::IFField, VT_BOOL>(0x60030033, u"IFField",
                                               "Whether a table's ADO recordset has a field of that name.", in(u"DB"),
                                               in(u"TableName"), in(u"FieldName"), in(u"Flag", 0)),
    operation<&_ClsValidate::dateToStr_Pf>(0x60030034, u"dateToStr_Pf", "A date as text: year, month and day.",
                                           date(u"vDate")),
    operation<&_ClsValidate::strDateFmt_Pf>(0x60030035, u"strDateFmt_Pf",
                                            "Eight-digit date text with the separators of strFmt between its parts.",
                                            in(u"strDay"), in(u"strFmt", kDefaultDateTemplate)),
    operation<&_ClsValidate::CreateIndex2>(0x60030036, u"CreateIndex2",
                                           "Adds an index of two fields to a table; failures pass silently.", in(u"DB"),
                                           in(u"sTn"), in(u"sInN"), in(u"sF1"), in(u"sF2")),
    operation<&_ClsValidate::CreateIndex>(0x60030038, u"CreateIndex",
                                          "Adds an index of one field to a table; failures pass silently.", in(u"DB"),
                                          in(u"sTn"), in(u"sInN"), in(u"sF1")),
    operation<&_ClsValidate::getDays_Pf>(0x60030039, u"getDays_Pf",
                                         "Days in a month; a year or month of 0 is the current one.", in(u"vYear", 0),
                                         in(u"vMonth", 0)),
    operation<&_ClsValidate::GetDecimalFmt>(0x6003003B, u"GetDecimalFmt", "Always the empty text.", in(u"sglData")),
    operation<&_ClsValidate::GetDecimalFmt_4>(0x6003003D, u"GetDecimalFmt_4", "A number text with four decimals.",
                                              in(u"sglData")),
    operation<&_ClsValidate::GetDecimalFmt_8>(0x6003003F, u"GetDecimalFmt_8", "A number text with eight decimals.",
                                              in(u"sglData")),
    operation<&_ClsValidate::GetDecimalFmt_Bus>(0x60030040, u"GetDecimalFmt_Bus",
                                                "A number text with sglIndex decimals, 1 to 8.", in(u"sglData"),
                                                in(u"sglIndex")),
    operation<&_ClsValidate::SetGrdCenter>(0x60030041, u"SetGrdCenter", "Centres the cells of a flex grid's first row.",
                                           in(u"Msfg")),
    operation<&_ClsValidate::SetGrdAlign>(0x60030042, u"SetGrdAlign", "Sets the alignment of every flex grid column.",
                                          in(u"Msfg"), in(u"intAlign", 1)),
    operation<&_ClsValidate::ClearGrd>(0x60030043, u"ClearGrd", "Gives a flex grid 200 rows and empties row 1.",
                                       in(u"Msfg")),
    operation<&_ClsValidate::Get_String_PY>(0x60030047, u"Get_String_PY",
                                            "Pinyin initials of a text; empty in this release.", in(u"strCon")),
    operation<&_ClsValidate::Get_StrWidth>(0x6003004A, u"Get_StrWidth",
                                           "Display width of a text in columns, as decimal digits.", in(u"strCon")),
    operation<&_ClsValidate::GetComputerNm>(0x6003004B, u"GetComputerNm", "The computer's name."));

inline constexpr std::array kClsVexAppOperations = interface_of(
    operation<&_ClsVexApp::GetComputerNm>(0x6003000A, u"GetComputerNm", "The computer's name."),
    operation<&_ClsVexApp::Replace_Str>(0x6003000B, u"Replace_Str",
                                        "Replaces the last Str1 by Str2 and turns every other Str2 into Str1.",
                                        in(u"strExpression"), in(u"Str1"), in(u"Str2")),
    operation<&_ClsVexApp::ConversionStr_Long>(0x6003000C, u"ConversionStr_Long",
                                               "A filler character behind every character.", in(u"StrTmp")),
    operation<&_ClsVexApp::ConversionStr_Short>(0x6003000D, u"ConversionStr_Short", "The characters at odd positions.",
                                                in(u"StrTmp")),
    operation<&_ClsVexApp::Set_Str>(0x60030012, u"Set_Str", "Stores a text in the thread's text slot.", in(u"StrNo")),
    operation<&_ClsVexApp::Get_Str>(0x60030013, u"Get_Str", "The text in the thread's text slot."));

}  // namespace corvelle
