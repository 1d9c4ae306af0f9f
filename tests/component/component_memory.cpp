#include "tests/component/component_memory.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <objidl.h>
#include <oleauto.h>

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_set>

#include "tests/support/loaded_image.h"

namespace corvelle::testing {
namespace {

// The blocks that are in use. Its own memory comes from this program's heap, which is not watched.
class Blocks {
 public:
  void add(void* block) {
    const std::lock_guard lock(mutex_);
    if (block != nullptr) blocks_.insert(block);
  }
  void remove(void* block) {
    const std::lock_guard lock(mutex_);
    blocks_.erase(block);
  }
  void clear() {
    const std::lock_guard lock(mutex_);
    blocks_.clear();
  }
  std::size_t count() const {
    const std::lock_guard lock(mutex_);
    return blocks_.size();
  }

 private:
  mutable std::mutex mutex_;
  std::unordered_set<void*> blocks_;
};

// What the replacements, plain functions, share.
struct Watch {
  Blocks heap;
  Blocks task_memory;  // where automation's texts live
  bool armed = false;
  bool for_good = false;
  bool struck = false;
  int calls_before = 0;
  int allocations = 0;

  bool strikes() {
    if (!armed) return false;
    const bool now = calls_before == 0 || (for_good && calls_before < 0);
    --calls_before;
    struck = struck || now;
    return now;
  }
};

Watch& watch() {
  static Watch shared;
  return shared;
}

void* __cdecl allocate(std::size_t size) {
  ++watch().allocations;
  if (watch().strikes()) return nullptr;
  void* block = std::malloc(size);
  watch().heap.add(block);
  return block;
}

void* __cdecl allocate_zeros(std::size_t count, std::size_t size) {
  ++watch().allocations;
  if (watch().strikes()) return nullptr;
  void* block = std::calloc(count, size);
  watch().heap.add(block);
  return block;
}

void* __cdecl reallocate(void* block, std::size_t size) {
  ++watch().allocations;
  if (watch().strikes()) return nullptr;
  watch().heap.remove(block);
  void* moved = std::realloc(block, size);
  watch().heap.add(moved);
  return moved;
}

// What is read after it was freed is to be nothing that looks right.
void __cdecl release(void* block) {
  watch().heap.remove(block);
  if (block != nullptr) std::memset(block, 0xDD, _msize(block));
  std::free(block);
}

BSTR WINAPI allocate_text(const OLECHAR* content, UINT length) {
  ++watch().allocations;
  return watch().strikes() ? nullptr : SysAllocStringLen(content, length);
}

INT WINAPI reallocate_text(BSTR* text, const OLECHAR* content, UINT length) {
  if (content != *text || length > SysStringLen(*text)) ++watch().allocations;
  return watch().strikes() ? FALSE : SysReAllocStringLen(text, content, length);
}

HRESULT WINAPI convert(VARIANTARG* target, VARIANTARG* source, LCID locale, USHORT flags, VARTYPE type) {
  return watch().strikes() ? E_OUTOFMEMORY : VariantChangeTypeEx(target, source, locale, flags, type);
}

HRESULT WINAPI copy(VARIANTARG* target, VARIANTARG* source) {
  return watch().strikes() ? E_OUTOFMEMORY : VariantCopyInd(target, source);
}

HRESULT WINAPI create_error_information(ICreateErrorInfo** result) {
  return watch().strikes() ? E_OUTOFMEMORY : CreateErrorInfo(result);
}

HRESULT WINAPI load_type_library(LPCOLESTR path, REGKIND registration, ITypeLib** result) {
  return watch().strikes() ? E_OUTOFMEMORY : LoadTypeLibEx(path, registration, result);
}

// Sees every block of COM's task memory.
class Spy final : public IMallocSpy {
 public:
  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    const bool known = interface_id == IID_IUnknown || interface_id == IID_IMallocSpy;
    *result = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }  // lives as long as the program
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
  STDMETHODIMP_(void*) PostAlloc(void* block) override {
    watch().task_memory.add(block);
    return block;
  }
  STDMETHODIMP_(void*) PreFree(void* block, BOOL /*spied*/) override {
    watch().task_memory.remove(block);
    return block;
  }
  STDMETHODIMP_(void) PostFree(BOOL /*spied*/) override {}
  STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** request, BOOL /*spied*/) override {
    *request = block;
    watch().task_memory.remove(block);
    return size;
  }
  STDMETHODIMP_(void*) PostRealloc(void* block, BOOL /*spied*/) override {
    watch().task_memory.add(block);
    return block;
  }
  STDMETHODIMP_(void*) PreGetSize(void* block, BOOL /*spied*/) override { return block; }
  STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL /*spied*/) override { return size; }
  STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL /*spied*/) override { return block; }
  STDMETHODIMP_(int) PostDidAlloc(void* /*block*/, BOOL /*spied*/, int answer) override { return answer; }
  STDMETHODIMP_(void) PreHeapMinimize() override {}
  STDMETHODIMP_(void) PostHeapMinimize() override {}
};

Spy& spy() {
  static Spy shared;
  return shared;
}

// Automation keeps freed texts for its next ones, where nobody could tell them from lost ones.
void switch_text_cache_off() {
  const FARPROC function = GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache");
  ASSERT_NE(function, nullptr);
  reinterpret_cast<void(WINAPI*)()>(reinterpret_cast<void*>(function))();
}

template <class Function>
void* address_of(Function* function) {
  return reinterpret_cast<void*>(function);
}

}  // namespace

class ComponentMemory::Replacements {
 public:
  bool complete() const {
    for (const ReplacedImport* each : {&malloc_, &calloc_, &realloc_, &free_, &text_, &text_again_, &conversion_,
                                       &error_information_, &type_library_}) {
      if (!each->found()) return false;
    }
    return true;
  }

 private:
  HMODULE component_ = GetModuleHandleW(L"Corvelle.dll");
  ReplacedImport malloc_{component_, "malloc", address_of(allocate)};
  ReplacedImport calloc_{component_, "calloc", address_of(allocate_zeros)};
  ReplacedImport realloc_{component_, "realloc", address_of(reallocate)};
  ReplacedImport free_{component_, "free", address_of(release)};
  ReplacedImport text_{component_, "SysAllocStringLen", address_of(allocate_text)};
  ReplacedImport text_again_{component_, "SysReAllocStringLen", address_of(reallocate_text)};
  ReplacedImport conversion_{component_, "VariantChangeTypeEx", address_of(convert)};
  ReplacedImport copy_{component_, "VariantCopyInd", address_of(copy)};
  ReplacedImport error_information_{component_, "CreateErrorInfo", address_of(create_error_information)};
  ReplacedImport type_library_{component_, "LoadTypeLibEx", address_of(load_type_library)};
};

ComponentMemory::ComponentMemory() {
  switch_text_cache_off();
  watch().heap.clear();
  watch().task_memory.clear();
  watch().armed = false;
  // A text that outlived an earlier object keeps the spy registered.
  const HRESULT registered = CoRegisterMallocSpy(&spy());
  EXPECT_TRUE(registered == S_OK || registered == CO_E_OBJISREG);
  replacements_ = std::make_unique<Replacements>();
  EXPECT_TRUE(replacements_->complete()) << "the DLL no longer imports what is watched here";
}

ComponentMemory::~ComponentMemory() { CoRevokeMallocSpy(); }

std::size_t ComponentMemory::blocks_in_use() const { return watch().heap.count() + watch().task_memory.count(); }

int ComponentMemory::allocations() const { return watch().allocations; }

void ComponentMemory::fail_allocation(int number) {
  watch().calls_before = number;
  watch().for_good = false;
  watch().struck = false;
  watch().armed = true;
}

void ComponentMemory::fail_from_allocation(int number) {
  fail_allocation(number);
  watch().for_good = true;
}

bool ComponentMemory::stop_failing() {
  watch().armed = false;
  return watch().struck;
}

}  // namespace corvelle::testing
