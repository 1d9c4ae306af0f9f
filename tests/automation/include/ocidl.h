// tests/automation/include/ocidl.h - what an object says of its class.
#pragma once

#include "tests/automation/include/oaidl.h"

struct IProvideClassInfo : IUnknown {
  static constexpr IID kInterfaceId = {0xB196B283, 0xBAB4, 0x101A, {0xB6, 0x9C, 0x00, 0xAA, 0x00, 0x34, 0x1D, 0x07}};
  virtual HRESULT GetClassInfo(ITypeInfo** result) = 0;
};

inline constexpr IID IID_IProvideClassInfo = IProvideClassInfo::kInterfaceId;
