#include "component/classes.h"

#include "component/host_database.h"
#include "component/host_grid.h"
#include "component/own_calls.h"
#include "data/computer_name.h"
#include "data/file_find.h"
#include "data/grid_helpers.h"
#include "data/schema_helpers.h"
#include "datenum/date_text.h"
#include "datenum/decimal_format.h"
#include "text/classification.h"
#include "text/display_width.h"
#include "text/fields.h"
#include "text/pinyin.h"
#include "text/replacement.h"
#include "text/substrings.h"
#include "text/text_slot.h"

namespace corvelle {
namespace {

// The host's database is an interface of its own library, which this one does without.
IUnknown* unknown_of(::Database* database) { return reinterpret_cast<IUnknown*>(database); }

// E_POINTER for an in/out parameter that leads nowhere.
Error null_pointer(const void* pointer, Argument where) {
  return pointer == nullptr ? Error(E_POINTER, where, {u"is null"}) : Error();
}

}  // namespace

STDMETHODIMP ClsValidate::sumByte_Pf(BSTR vStr, double* result) {
  return answer(result, [&] { return corvelle::sumByte_Pf(text_of(vStr)); });
}

STDMETHODIMP ClsValidate::GetByte_Pf(BSTR vStr, SHORT vInt, SHORT* result) {
  return answer(result, [&] { return corvelle::GetByte_Pf(text_of(vStr), vInt); });
}

STDMETHODIMP ClsValidate::getStr_Pf(BSTR Str, SHORT Num, BSTR sFlag, BSTR* result) {
  return answer(result, [&] { return corvelle::getStr_Pf(text_of(Str), Num, text_of(sFlag)); });
}

STDMETHODIMP ClsValidate::getStrDo_Pf(BSTR Str, SHORT Num, BSTR sFlag, BSTR* result) {
  return answer(result, [&] { return corvelle::getStrDo_Pf(text_of(Str), Num, text_of(sFlag)); });
}

STDMETHODIMP ClsValidate::Center(BSTR Str, BSTR* result) {
  return answer(result, [&] { return corvelle::Center(text_of(Str)); });
}

STDMETHODIMP ClsValidate::GetStr(BSTR Str, BSTR* result) {
  return answer(result, [&, self = kept()] { return corvelle::GetStr(text_of(Str), AlphaNumCall(*this)); });
}

STDMETHODIMP ClsValidate::is_AlphaNum(BSTR CheckString, VARIANT_BOOL* result) {
  return answer(result, [&] { return corvelle::is_AlphaNum(text_of(CheckString)); });
}

STDMETHODIMP ClsValidate::getNum(BSTR NewStr, BSTR* result) {
  return answer(result, [&] { return corvelle::getNum(text_of(NewStr)); });
}

STDMETHODIMP ClsValidate::Is_HuanZi(BSTR CheckString, VARIANT_BOOL* result) {
  return answer(result, [&] { return corvelle::Is_HuanZi(text_of(CheckString)); });
}

STDMETHODIMP ClsValidate::GetPath(BSTR PathFile, BSTR* result) {
  return answer(result, [&, self = kept()] { return corvelle::GetPath(text_of(PathFile), FieldCall(*this)); });
}

STDMETHODIMP ClsValidate::Get_Str(BSTR Str, BSTR Flag, BSTR* result) {
  return answer(result, [&] { return corvelle::Get_Str(text_of(Str), text_of(Flag)); });
}

STDMETHODIMP ClsValidate::CharChange(BSTR StrChar, BSTR* result) {
  return answer(result, [&] { return corvelle::CharChange(text_of(StrChar)); });
}

STDMETHODIMP ClsValidate::getString_P(BSTR NewStr, BSTR Flag1, BSTR Flag2, BSTR* result) {
  return answer(result, [&] { return corvelle::getString_P(text_of(NewStr), text_of(Flag1), text_of(Flag2)); });
}

STDMETHODIMP ClsValidate::Get_String(BSTR strName, LONG intBegin, LONG LngEnd, BSTR* result) {
  return answer(result, [&] { return corvelle::Get_String(text_of(strName), intBegin, LngEnd); });
}

STDMETHODIMP ClsValidate::Set_String1(BSTR strName, LONG lngLen, SHORT Flag, BSTR* result) {
  return answer(result, [&] { return corvelle::Set_String1(text_of(strName), lngLen, Flag); });
}

STDMETHODIMP ClsValidate::File_Find(BSTR FilePath, VARIANT_BOOL* result) {
  return answer(result, [&] { return corvelle::File_Find(text_of(FilePath)); });
}

STDMETHODIMP ClsValidate::IFTable(::Database* DB, BSTR TableName, VARIANT_BOOL* result) {
  return answer(result, [&, self = kept()] {
    HostDatabase database(unknown_of(DB), u"IFTable");
    return corvelle::IFTable(database, text_of(TableName));
  });
}

STDMETHODIMP ClsValidate::IFField(::Database* DB, BSTR TableName, BSTR FieldName, SHORT Flag, VARIANT_BOOL* result) {
  return answer(result, [&, self = kept()] {
    HostDatabase database(unknown_of(DB), u"IFField");
    return corvelle::IFField(database, text_of(TableName), text_of(FieldName), Flag);
  });
}

STDMETHODIMP ClsValidate::dateToStr_Pf(DATE vDate, BSTR* result) {
  return answer(result, [&] { return corvelle::dateToStr_Pf(vDate); });
}

STDMETHODIMP ClsValidate::strDateFmt_Pf(BSTR strDay, BSTR* strFmt, BSTR* result) {
  return answer(result, [&]() -> Result<Text> {
    if (Error error = null_pointer(strFmt, {u"strDateFmt_Pf", u"strFmt"})) return error;
    return corvelle::strDateFmt_Pf(text_of(strDay), text_of(*strFmt));
  });
}

STDMETHODIMP ClsValidate::CreateIndex2(::Database* DB, BSTR sTn, BSTR sInN, BSTR sF1, BSTR sF2) {
  return run([&, self = kept()] {
    HostDatabase database(unknown_of(DB), u"CreateIndex2");
    corvelle::CreateIndex2(database, text_of(sTn), text_of(sInN), text_of(sF1), text_of(sF2));
    return Error();
  });
}

STDMETHODIMP ClsValidate::CreateIndex(::Database* DB, BSTR sTn, BSTR sInN, BSTR sF1) {
  return run([&, self = kept()] {
    HostDatabase database(unknown_of(DB), u"CreateIndex");
    corvelle::CreateIndex(database, text_of(sTn), text_of(sInN), text_of(sF1));
    return Error();
  });
}

STDMETHODIMP ClsValidate::getDays_Pf(SHORT vYear, SHORT vMonth, SHORT* result) {
  return answer(result, [&] { return corvelle::getDays_Pf(vYear, vMonth); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt(BSTR sglData, BSTR* result) {
  return answer(result, [&] { return corvelle::GetDecimalFmt(text_of(sglData)); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt_4(BSTR sglData, BSTR* result) {
  return answer(result, [&] { return corvelle::GetDecimalFmt_4(text_of(sglData)); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt_8(BSTR sglData, BSTR* result) {
  return answer(result, [&] { return corvelle::GetDecimalFmt_8(text_of(sglData)); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt_Bus(BSTR sglData, SHORT sglIndex, BSTR* result) {
  return answer(result, [&] { return corvelle::GetDecimalFmt_Bus(text_of(sglData), sglIndex); });
}

STDMETHODIMP ClsValidate::SetGrdCenter(VARIANT Msfg, VARIANT* result) {
  return answer(result, [&, self = kept()] {
    HostGrid grid(Msfg, u"SetGrdCenter");
    return corvelle::SetGrdCenter(grid);
  });
}

STDMETHODIMP ClsValidate::SetGrdAlign(VARIANT Msfg, SHORT* intAlign, VARIANT* result) {
  return answer(result, [&, self = kept()] {
    HostGrid grid(Msfg, u"SetGrdAlign");
    if (Error error = null_pointer(intAlign, {u"SetGrdAlign", u"intAlign"})) return error;
    return corvelle::SetGrdAlign(grid, *intAlign);
  });
}

STDMETHODIMP ClsValidate::ClearGrd(VARIANT Msfg) {
  return run([&, self = kept()] {
    HostGrid grid(Msfg, u"ClearGrd");
    return corvelle::ClearGrd(grid);
  });
}

STDMETHODIMP ClsValidate::Get_String_PY(BSTR strCon, BSTR* result) {
  return answer(result, [&] {
    return corvelle::Get_String_PY(text_of(strCon),
                                   [](std::u16string_view character) { return Get_Char_PY(character); });
  });
}

STDMETHODIMP ClsValidate::Get_StrWidth(BSTR strCon, BSTR* result) {
  return answer(result, [&] { return corvelle::Get_StrWidth(text_of(strCon)); });
}

STDMETHODIMP ClsValidate::GetComputerNm(BSTR* result) {
  return answer(result, [&] { return corvelle::GetComputerNm(); });
}

STDMETHODIMP ClsVexApp::GetComputerNm(BSTR* result) {
  return answer(result, [&] { return corvelle::GetComputerNm(); });
}

STDMETHODIMP ClsVexApp::Replace_Str(BSTR strExpression, BSTR Str1, BSTR Str2, VARIANT* result) {
  return answer(result, [&] { return corvelle::Replace_Str(text_of(strExpression), text_of(Str1), text_of(Str2)); });
}

STDMETHODIMP ClsVexApp::ConversionStr_Long(BSTR StrTmp, BSTR* result) {
  return answer(result, [&] { return corvelle::ConversionStr_Long(text_of(StrTmp)); });
}

STDMETHODIMP ClsVexApp::ConversionStr_Short(BSTR StrTmp, BSTR* result) {
  return answer(result, [&] { return corvelle::ConversionStr_Short(text_of(StrTmp)); });
}

STDMETHODIMP ClsVexApp::Set_Str(BSTR StrNo, VARIANT* result) {
  return answer(result, [&] { return corvelle::Set_Str(text_of(StrNo)); });
}

STDMETHODIMP ClsVexApp::Get_Str(BSTR* result) {
  return answer(result, [&] { return corvelle::Get_Str(); });
}

}  // namespace corvelle
