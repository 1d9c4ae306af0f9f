// tests/automation/include/oaidl.h - automation's values and its interfaces.
#pragma once

#include "tests/automation/include/unknwn.h"

using BSTR = OLECHAR*;
using DISPID = LONG;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using DATE = double;

inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

enum VARENUM {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_VOID = 24,
  VT_HRESULT = 25,
  VT_PTR = 26,
  VT_SAFEARRAY = 27,
  VT_CARRAY = 28,
  VT_USERDEFINED = 29,
  VT_LPSTR = 30,
  VT_LPWSTR = 31,
  VT_RECORD = 36,
  VT_BLOB = 65,
  VT_CLSID = 72,
  VT_BSTR_BLOB = 0xFFF,
  VT_VECTOR = 0x1000,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000,
  VT_RESERVED = 0x8000
};

struct DECIMAL {
  WORD wReserved;
  BYTE scale;
  BYTE sign;
  ULONG Hi32;
  ULONGLONG Lo64;
};

struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;
  void* pvData;
  SAFEARRAYBOUND rgsabound[1];
};

struct IDispatch;

struct tagVARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  __extension__ union {
    std::int8_t cVal;
    BYTE bVal;
    SHORT iVal;
    USHORT uiVal;
    LONG lVal;
    ULONG ulVal;
    LONGLONG llVal;
    float fltVal;
    double dblVal;
    DATE date;
    VARIANT_BOOL boolVal;
    HRESULT scode;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
    SAFEARRAY* parray;
    void* byref;
    SHORT* piVal;
    HRESULT* plVal;
    BSTR* pbstrVal;
    IUnknown** ppunkVal;
    IDispatch** ppdispVal;
    SAFEARRAY** pparray;
    tagVARIANT* pvarVal;
    __extension__ struct {
      void* pvRecord;
      IUnknown* pRecInfo;
    };
  };
};
using VARIANT = tagVARIANT;
using VARIANTARG = VARIANT;

struct DISPPARAMS {
  VARIANTARG* rgvarg;
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};

struct EXCEPINFO {
  WORD wCode;
  WORD wReserved;
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  DWORD dwHelpContext;
  void* pvReserved;
  HRESULT (*pfnDeferredFillIn)(EXCEPINFO* exception);
  HRESULT scode;
};

inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;
inline constexpr DISPID DISPID_NEWENUM = -4;
inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 8;

struct ITypeInfo : IUnknown {};

struct IDispatch : IUnknown {
  static constexpr IID kInterfaceId = automation::own_interface(0x00020400);
  virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) = 0;
  virtual HRESULT GetIDsOfNames(REFIID interface_id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) = 0;
  virtual HRESULT Invoke(DISPID id, REFIID interface_id, LCID locale, WORD flags, DISPPARAMS* parameters,
                         VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument) = 0;
};

struct IEnumVARIANT : IUnknown {
  static constexpr IID kInterfaceId = automation::own_interface(0x00020404);
  virtual HRESULT Next(ULONG count, VARIANT* items, ULONG* fetched) = 0;
  virtual HRESULT Skip(ULONG count) = 0;
  virtual HRESULT Reset() = 0;
  virtual HRESULT Clone(IEnumVARIANT** result) = 0;
};

struct IErrorInfo : IUnknown {
  static constexpr IID kInterfaceId = {0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
  virtual HRESULT GetGUID(GUID* id) = 0;
  virtual HRESULT GetSource(BSTR* source) = 0;
  virtual HRESULT GetDescription(BSTR* description) = 0;
  virtual HRESULT GetHelpFile(BSTR* file) = 0;
  virtual HRESULT GetHelpContext(DWORD* context) = 0;
};

struct ICreateErrorInfo : IUnknown {
  static constexpr IID kInterfaceId = {0x22F03340, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
  virtual HRESULT SetGUID(REFGUID id) = 0;
  virtual HRESULT SetSource(LPOLESTR source) = 0;
  virtual HRESULT SetDescription(LPOLESTR description) = 0;
  virtual HRESULT SetHelpFile(LPOLESTR file) = 0;
  virtual HRESULT SetHelpContext(DWORD context) = 0;
};

struct ISupportErrorInfo : IUnknown {
  static constexpr IID kInterfaceId = {0xDF0B3D60, 0x548F, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
  virtual HRESULT InterfaceSupportsErrorInfo(REFIID interface_id) = 0;
};

inline constexpr IID IID_IDispatch = IDispatch::kInterfaceId;
inline constexpr IID IID_IEnumVARIANT = IEnumVARIANT::kInterfaceId;
inline constexpr IID IID_IErrorInfo = IErrorInfo::kInterfaceId;
inline constexpr IID IID_ICreateErrorInfo = ICreateErrorInfo::kInterfaceId;
inline constexpr IID IID_ISupportErrorInfo = ISupportErrorInfo::kInterfaceId;

// What a VARIANT holds, by the names that the system has for it.
template <class Variant>
auto& V_VT(Variant* variant) {
  return variant->vt;
}
template <class Variant>
auto& V_I2(Variant* variant) {
  return variant->iVal;
}
template <class Variant>
auto& V_NONE(Variant* variant) {
  return variant->iVal;
}
template <class Variant>
auto& V_I4(Variant* variant) {
  return variant->lVal;
}
template <class Variant>
auto& V_I8(Variant* variant) {
  return variant->llVal;
}
template <class Variant>
auto& V_R4(Variant* variant) {
  return variant->fltVal;
}
template <class Variant>
auto& V_R8(Variant* variant) {
  return variant->dblVal;
}
template <class Variant>
auto& V_DATE(Variant* variant) {
  return variant->date;
}
template <class Variant>
auto& V_BOOL(Variant* variant) {
  return variant->boolVal;
}
template <class Variant>
auto& V_ERROR(Variant* variant) {
  return variant->scode;
}
template <class Variant>
auto& V_BSTR(Variant* variant) {
  return variant->bstrVal;
}
template <class Variant>
auto& V_UNKNOWN(Variant* variant) {
  return variant->punkVal;
}
template <class Variant>
auto& V_DISPATCH(Variant* variant) {
  return variant->pdispVal;
}
template <class Variant>
auto& V_ARRAY(Variant* variant) {
  return variant->parray;
}
template <class Variant>
auto& V_BYREF(Variant* variant) {
  return variant->byref;
}
template <class Variant>
auto& V_I2REF(Variant* variant) {
  return variant->piVal;
}
template <class Variant>
auto& V_ERRORREF(Variant* variant) {
  return variant->plVal;
}
template <class Variant>
auto& V_BSTRREF(Variant* variant) {
  return variant->pbstrVal;
}
template <class Variant>
auto& V_UNKNOWNREF(Variant* variant) {
  return variant->ppunkVal;
}
template <class Variant>
auto& V_DISPATCHREF(Variant* variant) {
  return variant->ppdispVal;
}
template <class Variant>
auto& V_ARRAYREF(Variant* variant) {
  return variant->pparray;
}
template <class Variant>
auto& V_VARIANTREF(Variant* variant) {
  return variant->pvarVal;
}
