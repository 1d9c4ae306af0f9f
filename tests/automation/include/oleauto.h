// tests/automation/include/oleauto.h - what automation does with its values.
#pragma once

#include "tests/automation/include/oaidl.h"
#include "tests/automation/include/objbase.h"

// Each text is a block of its own, so that a sanitizer sees every byte in front of it and behind it.
BSTR SysAllocString(LPCOLESTR content);
BSTR SysAllocStringLen(const OLECHAR* content, UINT length);
BSTR SysAllocStringByteLen(const char* content, UINT bytes);
INT SysReAllocStringLen(BSTR* text, const OLECHAR* content, UINT length);
void SysFreeString(BSTR text);
UINT SysStringLen(BSTR text);
UINT SysStringByteLen(BSTR text);

void VariantInit(VARIANTARG* variant);
// What the system would follow into the void ends the process here: a record that nobody made, a null reference.
HRESULT VariantClear(VARIANTARG* variant);
HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source);
HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source);
// Between numbers, dates and texts; an object is asked for its default property.
HRESULT VariantChangeTypeEx(VARIANTARG* target, const VARIANTARG* source, LCID locale, USHORT flags, VARTYPE type);
HRESULT VariantChangeType(VARIANTARG* target, const VARIANTARG* source, USHORT flags, VARTYPE type);

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG first, ULONG count);  // of numbers
HRESULT SafeArrayDestroy(SAFEARRAY* array);

HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* information);
HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** information);
HRESULT CreateErrorInfo(ICreateErrorInfo** result);

enum CALLCONV { CC_STDCALL = 4 };
HRESULT DispCallFunc(void* object, ULONG_PTR offset, CALLCONV convention, VARTYPE type, UINT count, VARTYPE* types,
                     VARIANTARG** arguments, VARIANT* result);
