#include "component/classes.h"

namespace corvelle {
namespace {

// For operations that are published but not built yet.
[[noreturn]] void not_built(std::u16string_view operation) {
  throw HostError(E_NOTIMPL, std::u16string(operation) + u": not built yet", u"");
}

}  // namespace

STDMETHODIMP ClsValidate::sumByte_Pf(BSTR /*vStr*/, double* result) {
  return answer(result, [] { not_built(u"sumByte_Pf"); });
}

STDMETHODIMP ClsValidate::GetByte_Pf(BSTR /*vStr*/, SHORT /*vInt*/, SHORT* result) {
  return answer(result, [] { not_built(u"GetByte_Pf"); });
}

STDMETHODIMP ClsValidate::getStr_Pf(BSTR /*Str*/, SHORT /*Num*/, BSTR /*sFlag*/, BSTR* result) {
  return answer(result, [] { not_built(u"getStr_Pf"); });
}

STDMETHODIMP ClsValidate::getStrDo_Pf(BSTR /*Str*/, SHORT /*Num*/, BSTR /*sFlag*/, BSTR* result) {
  return answer(result, [] { not_built(u"getStrDo_Pf"); });
}

STDMETHODIMP ClsValidate::Center(BSTR /*Str*/, BSTR* result) {
  return answer(result, [] { not_built(u"Center"); });
}

STDMETHODIMP ClsValidate::GetStr(BSTR /*Str*/, BSTR* result) {
  return answer(result, [] { not_built(u"GetStr"); });
}

STDMETHODIMP ClsValidate::is_AlphaNum(BSTR /*CheckString*/, VARIANT_BOOL* result) {
  return answer(result, [] { not_built(u"is_AlphaNum"); });
}

STDMETHODIMP ClsValidate::getNum(BSTR /*NewStr*/, BSTR* result) {
  return answer(result, [] { not_built(u"getNum"); });
}

STDMETHODIMP ClsValidate::Is_HuanZi(BSTR /*CheckString*/, VARIANT_BOOL* result) {
  return answer(result, [] { not_built(u"Is_HuanZi"); });
}

STDMETHODIMP ClsValidate::GetPath(BSTR /*PathFile*/, BSTR* result) {
  return answer(result, [] { not_built(u"GetPath"); });
}

STDMETHODIMP ClsValidate::Get_Str(BSTR /*Str*/, BSTR /*Flag*/, BSTR* result) {
  return answer(result, [] { not_built(u"Get_Str"); });
}

STDMETHODIMP ClsValidate::CharChange(BSTR /*StrChar*/, BSTR* result) {
  return answer(result, [] { not_built(u"CharChange"); });
}

STDMETHODIMP ClsValidate::getString_P(BSTR /*NewStr*/, BSTR /*Flag1*/, BSTR /*Flag2*/, BSTR* result) {
  return answer(result, [] { not_built(u"getString_P"); });
}

STDMETHODIMP ClsValidate::Get_String(BSTR /*strName*/, LONG /*intBegin*/, LONG /*LngEnd*/, BSTR* result) {
  return answer(result, [] { not_built(u"Get_String"); });
}

STDMETHODIMP ClsValidate::Set_String1(BSTR /*strName*/, LONG /*lngLen*/, SHORT /*Flag*/, BSTR* result) {
  return answer(result, [] { not_built(u"Set_String1"); });
}

STDMETHODIMP ClsValidate::File_Find(BSTR /*FilePath*/, VARIANT_BOOL* result) {
  return answer(result, [] { not_built(u"File_Find"); });
}

STDMETHODIMP ClsValidate::IFTable(Database* /*DB*/, BSTR /*TableName*/, VARIANT_BOOL* result) {
  return answer(result, [] { not_built(u"IFTable"); });
}

STDMETHODIMP ClsValidate::IFField(Database* /*DB*/, BSTR /*TableName*/, BSTR /*FieldName*/, SHORT /*Flag*/,
                                  VARIANT_BOOL* result) {
  return answer(result, [] { not_built(u"IFField"); });
}

STDMETHODIMP ClsValidate::dateToStr_Pf(DATE /*vDate*/, BSTR* result) {
  return answer(result, [] { not_built(u"dateToStr_Pf"); });
}

STDMETHODIMP ClsValidate::strDateFmt_Pf(BSTR /*strDay*/, BSTR* /*strFmt*/, BSTR* result) {
  return answer(result, [] { not_built(u"strDateFmt_Pf"); });
}

STDMETHODIMP ClsValidate::CreateIndex2(Database* /*DB*/, BSTR /*sTn*/, BSTR /*sInN*/, BSTR /*sF1*/, BSTR /*sF2*/) {
  return run([] { not_built(u"CreateIndex2"); });
}

STDMETHODIMP ClsValidate::CreateIndex(Database* /*DB*/, BSTR /*sTn*/, BSTR /*sInN*/, BSTR /*sF1*/) {
  return run([] { not_built(u"CreateIndex"); });
}

STDMETHODIMP ClsValidate::getDays_Pf(SHORT /*vYear*/, SHORT /*vMonth*/, SHORT* result) {
  return answer(result, [] { not_built(u"getDays_Pf"); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt(BSTR /*sglData*/, BSTR* result) {
  return answer(result, [] { not_built(u"GetDecimalFmt"); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt_4(BSTR /*sglData*/, BSTR* result) {
  return answer(result, [] { not_built(u"GetDecimalFmt_4"); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt_8(BSTR /*sglData*/, BSTR* result) {
  return answer(result, [] { not_built(u"GetDecimalFmt_8"); });
}

STDMETHODIMP ClsValidate::GetDecimalFmt_Bus(BSTR /*sglData*/, SHORT /*sglIndex*/, BSTR* result) {
  return answer(result, [] { not_built(u"GetDecimalFmt_Bus"); });
}

STDMETHODIMP ClsValidate::SetGrdCenter(VARIANT /*Msfg*/, VARIANT* result) {
  return answer(result, [] { not_built(u"SetGrdCenter"); });
}

STDMETHODIMP ClsValidate::SetGrdAlign(VARIANT /*Msfg*/, SHORT* /*intAlign*/, VARIANT* result) {
  return answer(result, [] { not_built(u"SetGrdAlign"); });
}

STDMETHODIMP ClsValidate::ClearGrd(VARIANT /*Msfg*/) {
  return run([] { not_built(u"ClearGrd"); });
}

STDMETHODIMP ClsValidate::Get_String_PY(BSTR /*strCon*/, BSTR* result) {
  return answer(result, [] { not_built(u"Get_String_PY"); });
}

STDMETHODIMP ClsValidate::Get_StrWidth(BSTR /*strCon*/, BSTR* result) {
  return answer(result, [] { not_built(u"Get_StrWidth"); });
}

STDMETHODIMP ClsValidate::GetComputerNm(BSTR* result) {
  return answer(result, [] { not_built(u"GetComputerNm"); });
}

STDMETHODIMP ClsVexApp::GetComputerNm(BSTR* result) {
  return answer(result, [] { not_built(u"GetComputerNm"); });
}

STDMETHODIMP ClsVexApp::Replace_Str(BSTR /*strExpression*/, BSTR /*Str1*/, BSTR /*Str2*/, VARIANT* result) {
  return answer(result, [] { not_built(u"Replace_Str"); });
}

STDMETHODIMP ClsVexApp::ConversionStr_Long(BSTR /*StrTmp*/, BSTR* result) {
  return answer(result, [] { not_built(u"ConversionStr_Long"); });
}

STDMETHODIMP ClsVexApp::ConversionStr_Short(BSTR /*StrTmp*/, BSTR* result) {
  return answer(result, [] { not_built(u"ConversionStr_Short"); });
}

STDMETHODIMP ClsVexApp::Set_Str(BSTR /*StrNo*/, VARIANT* result) {
  return answer(result, [] { not_built(u"Set_Str"); });
}

STDMETHODIMP ClsVexApp::Get_Str(BSTR* result) {
  return answer(result, [] { not_built(u"Get_Str"); });
}

}  // namespace corvelle
