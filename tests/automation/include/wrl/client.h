// tests/automation/include/wrl/client.h - a pointer that holds a reference.
#pragma once

#include <utility>

#include "tests/automation/include/unknwn.h"

namespace Microsoft::WRL {

template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  ComPtr(Interface* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  template <class Derived>
  ComPtr(const ComPtr<Derived>& other) : ComPtr(other.Get()) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~ComPtr() { Reset(); }
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  Interface* Get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  Interface** GetAddressOf() { return &object_; }
  Interface** ReleaseAndGetAddressOf() {
    Reset();
    return &object_;
  }
  Interface** operator&() { return ReleaseAndGetAddressOf(); }
  Interface* Detach() { return std::exchange(object_, nullptr); }
  ULONG Reset() {
    Interface* object = Detach();
    return object != nullptr ? object->Release() : 0;
  }
  template <class Other>
  HRESULT As(Other** other) const {
    return object_->QueryInterface(IID_PPV_ARGS(other));
  }

 private:
  Interface* object_ = nullptr;
};

}  // namespace Microsoft::WRL
