// component/classes.h - the two published classes: one statement an operation.
#pragma once

#include "component/automation_object.h"
#include "component/interfaces.h"

namespace corvelle {

class ClsValidate final : public AutomationObject<ClsValidate, _ClsValidate, kClsValidateClass> {
 public:
  STDMETHODIMP sumByte_Pf(BSTR vStr, double* result) override;
  STDMETHODIMP GetByte_Pf(BSTR vStr, SHORT vInt, SHORT* result) override;
  STDMETHODIMP getStr_Pf(BSTR Str, SHORT Num, BSTR sFlag, BSTR* result) override;
  STDMETHODIMP getStrDo_Pf(BSTR Str, SHORT Num, BSTR sFlag, BSTR* result) override;
  STDMETHODIMP Center(BSTR Str, BSTR* result) override;
  STDMETHODIMP GetStr(BSTR Str, BSTR* result) override;
  STDMETHODIMP is_AlphaNum(BSTR CheckString, VARIANT_BOOL* result) override;
  STDMETHODIMP getNum(BSTR NewStr, BSTR* result) override;
  STDMETHODIMP Is_HuanZi(BSTR CheckString, VARIANT_BOOL* result) override;
  STDMETHODIMP GetPath(BSTR PathFile, BSTR* result) override;
  STDMETHODIMP Get_Str(BSTR Str, BSTR Flag, BSTR* result) override;
  STDMETHODIMP CharChange(BSTR StrChar, BSTR* result) override;
  STDMETHODIMP getString_P(BSTR NewStr, BSTR Flag1, BSTR Flag2, BSTR* result) override;
  STDMETHODIMP Get_String(BSTR strName, LONG intBegin, LONG LngEnd, BSTR* result) override;
  STDMETHODIMP Set_String1(BSTR strName, LONG lngLen, SHORT Flag, BSTR* result) override;
  STDMETHODIMP File_Find(BSTR FilePath, VARIANT_BOOL* result) override;
  STDMETHODIMP IFTable(::Database* DB, BSTR TableName, VARIANT_BOOL* result) override;
  STDMETHODIMP IFField(::Database* DB, BSTR TableName, BSTR FieldName, SHORT Flag, VARIANT_BOOL* result) override;
  STDMETHODIMP dateToStr_Pf(DATE vDate, BSTR* result) override;
  STDMETHODIMP strDateFmt_Pf(BSTR strDay, BSTR* strFmt, BSTR* result) override;
  STDMETHODIMP CreateIndex2(::Database* DB, BSTR sTn, BSTR sInN, BSTR sF1, BSTR sF2) override;
  STDMETHODIMP CreateIndex(::Database* DB, BSTR sTn, BSTR sInN, BSTR sF1) override;
  STDMETHODIMP getDays_Pf(SHORT vYear, SHORT vMonth, SHORT* result) override;
  STDMETHODIMP GetDecimalFmt(BSTR sglData, BSTR* result) override;
  STDMETHODIMP GetDecimalFmt_4(BSTR sglData, BSTR* result) override;
  STDMETHODIMP GetDecimalFmt_8(BSTR sglData, BSTR* result) override;
  STDMETHODIMP GetDecimalFmt_Bus(BSTR sglData, SHORT sglIndex, BSTR* result) override;
  STDMETHODIMP SetGrdCenter(VARIANT Msfg, VARIANT* result) override;
  STDMETHODIMP SetGrdAlign(VARIANT Msfg, SHORT* intAlign, VARIANT* result) override;
  STDMETHODIMP ClearGrd(VARIANT Msfg) override;
  STDMETHODIMP Get_String_PY(BSTR strCon, BSTR* result) override;
  STDMETHODIMP Get_StrWidth(BSTR strCon, BSTR* result) override;
  STDMETHODIMP GetComputerNm(BSTR* result) override;
};

class ClsVexApp final : public AutomationObject<ClsVexApp, _ClsVexApp, kClsVexAppClass> {
 public:
  STDMETHODIMP GetComputerNm(BSTR* result) override;
  STDMETHODIMP Replace_Str(BSTR strExpression, BSTR Str1, BSTR Str2, VARIANT* result) override;
  STDMETHODIMP ConversionStr_Long(BSTR StrTmp, BSTR* result) override;
  STDMETHODIMP ConversionStr_Short(BSTR StrTmp, BSTR* result) override;
  STDMETHODIMP Set_Str(BSTR StrNo, VARIANT* result) override;
  STDMETHODIMP Get_Str(BSTR* result) override;
};

}  // namespace corvelle
