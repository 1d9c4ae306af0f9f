// tests/automation/include/unknwn.h - the interfaces that every object and every class factory has.
#pragma once

#include <type_traits>

#include "tests/automation/include/windows.h"

struct IUnknown {
  static constexpr IID kInterfaceId = automation::own_interface(0x00000000);
  virtual HRESULT QueryInterface(REFIID interface_id, void** result) = 0;
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;
};

struct IClassFactory : IUnknown {
  static constexpr IID kInterfaceId = automation::own_interface(0x00000001);
  virtual HRESULT CreateInstance(IUnknown* outer, REFIID interface_id, void** result) = 0;
  virtual HRESULT LockServer(BOOL lock) = 0;
};

inline constexpr IID IID_IUnknown = IUnknown::kInterfaceId;
inline constexpr IID IID_IClassFactory = IClassFactory::kInterfaceId;

#define __uuidof(interface) interface::kInterfaceId

// Two arguments in one, which only a macro can be.
#define IID_PPV_ARGS(place) \
  std::remove_reference_t<decltype(**(place))>::kInterfaceId, reinterpret_cast<void**>(automation::pointer_to(place))

namespace automation {

template <class Interface>
Interface** pointer_to(Interface** place) {
  return place;
}

}  // namespace automation
