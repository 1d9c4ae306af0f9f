// tests/automation/include/dispex.h - late binding as the classes of scripts have it.
#pragma once

#include "tests/automation/include/oaidl.h"

struct IServiceProvider;

struct IDispatchEx : IDispatch {
  static constexpr IID kInterfaceId = {0xA6EF9860, 0xC720, 0x11D0, {0x93, 0x37, 0x00, 0xA0, 0xC9, 0x0D, 0xCA, 0xA9}};
  virtual HRESULT GetDispID(BSTR name, DWORD options, DISPID* id) = 0;
  virtual HRESULT InvokeEx(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                           EXCEPINFO* exception, IServiceProvider* caller) = 0;
  virtual HRESULT DeleteMemberByName(BSTR name, DWORD options) = 0;
  virtual HRESULT DeleteMemberByDispID(DISPID id) = 0;
  virtual HRESULT GetMemberProperties(DISPID id, DWORD fetch, DWORD* properties) = 0;
  virtual HRESULT GetMemberName(DISPID id, BSTR* name) = 0;
  virtual HRESULT GetNextDispID(DWORD options, DISPID id, DISPID* next) = 0;
  virtual HRESULT GetNameSpaceParent(IUnknown** parent) = 0;
};

inline constexpr IID IID_IDispatchEx = IDispatchEx::kInterfaceId;
inline constexpr DWORD fdexNameCaseInsensitive = 8;
