#include "component/class_factory.h"

#include <unknwn.h>

#include <atomic>
#include <iterator>

#include "base/from_heap.h"
#include "component/classes.h"
#include "component/module.h"

namespace corvelle {
namespace {

using Creator = HRESULT (*)(REFIID interface_id, void** result) noexcept;

struct CreatableClass {
  const ClassDescription* description;
  Creator create;
};

constexpr CreatableClass kCreatableClasses[] = {
    {&kClsValidateClass, &ClsValidate::create},
    {&kClsVexAppClass, &ClsVexApp::create},
};
static_assert(std::size(kCreatableClasses) == kClasses.size());

class ClassFactory final : public IClassFactory, public FromHeap {
 public:
  explicit ClassFactory(Creator create) : create_(create) {}

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (interface_id != IID_IUnknown && interface_id != IID_IClassFactory) return E_NOINTERFACE;
    *result = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }

  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }

  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID interface_id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return outer != nullptr ? CLASS_E_NOAGGREGATION : create_(interface_id, result);
  }

  STDMETHODIMP LockServer(BOOL lock) override {
    lock_module(lock != FALSE);
    return S_OK;
  }

 private:
  std::atomic<ULONG> references_ = 1;
  Creator create_;
  ModuleReference module_;
};

}  // namespace

HRESULT class_factory(REFCLSID class_id, REFIID interface_id, void** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  for (const CreatableClass& candidate : kCreatableClasses) {
    if (candidate.description->class_id != class_id) continue;
    auto* factory = new ClassFactory(candidate.create);
    if (factory == nullptr) return E_OUTOFMEMORY;
    const HRESULT found = factory->QueryInterface(interface_id, result);
    factory->Release();
    return found;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

}  // namespace corvelle
