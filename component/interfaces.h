// component/interfaces.h - the two published dual interfaces, as C++ hosts call them early bound.
//
// The order of the members is the order of the vtable and never changes. A result comes through the last parameter;
// DATE is a double of days since 30 December 1899, VARIANT_BOOL is -1 for true and 0 for false.
#pragma once

#include <windows.h>

#include <oaidl.h>

// The host's Data Access Objects database; the component only drives it by name.
struct Database;

struct _ClsValidate : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE sumByte_Pf(BSTR vStr, double* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetByte_Pf(BSTR vStr, SHORT vInt, SHORT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE getStr_Pf(BSTR Str, SHORT Num, BSTR sFlag, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE getStrDo_Pf(BSTR Str, SHORT Num, BSTR sFlag, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Center(BSTR Str, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetStr(BSTR Str, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE is_AlphaNum(BSTR CheckString, VARIANT_BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE getNum(BSTR NewStr, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Is_HuanZi(BSTR CheckString, VARIANT_BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPath(BSTR PathFile, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Get_Str(BSTR Str, BSTR Flag, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE CharChange(BSTR StrChar, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE getString_P(BSTR NewStr, BSTR Flag1, BSTR Flag2, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Get_String(BSTR strName, LONG intBegin, LONG LngEnd, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Set_String1(BSTR strName, LONG lngLen, SHORT Flag, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE File_Find(BSTR FilePath, VARIANT_BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE IFTable(Database* DB, BSTR TableName, VARIANT_BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE IFField(Database* DB, BSTR TableName, BSTR FieldName, SHORT Flag,
                                            VARIANT_BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE dateToStr_Pf(DATE vDate, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE strDateFmt_Pf(BSTR strDay, BSTR* strFmt, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateIndex2(Database* DB, BSTR sTn, BSTR sInN, BSTR sF1, BSTR sF2) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateIndex(Database* DB, BSTR sTn, BSTR sInN, BSTR sF1) = 0;
  virtual HRESULT STDMETHODCALLTYPE getDays_Pf(SHORT vYear, SHORT vMonth, SHORT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDecimalFmt(BSTR sglData, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDecimalFmt_4(BSTR sglData, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDecimalFmt_8(BSTR sglData, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDecimalFmt_Bus(BSTR sglData, SHORT sglIndex, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetGrdCenter(VARIANT Msfg, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetGrdAlign(VARIANT Msfg, SHORT* intAlign, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE ClearGrd(VARIANT Msfg) = 0;
  virtual HRESULT STDMETHODCALLTYPE Get_String_PY(BSTR strCon, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Get_StrWidth(BSTR strCon, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetComputerNm(BSTR* result) = 0;
};

struct _ClsVexApp : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE GetComputerNm(BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Replace_Str(BSTR strExpression, BSTR Str1, BSTR Str2, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE ConversionStr_Long(BSTR StrTmp, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE ConversionStr_Short(BSTR StrTmp, BSTR* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Set_Str(BSTR StrNo, VARIANT* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Get_Str(BSTR* result) = 0;
};
