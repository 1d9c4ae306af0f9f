#include "component/module.h"

#include <atomic>

namespace corvelle {
namespace {

std::atomic<long> uses = 0;
std::atomic<long> locks = 0;

}  // namespace

ModuleReference::ModuleReference() noexcept { ++uses; }
ModuleReference::~ModuleReference() { --uses; }

void lock_module(bool lock) noexcept {
  if (lock) {
    ++locks;
    return;
  }
  long held = locks;
  while (held > 0 && !locks.compare_exchange_weak(held, held - 1)) {
  }
}

bool module_in_use() noexcept { return uses != 0 || locks != 0; }

HMODULE module_handle() noexcept {
  HMODULE handle = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&uses), &handle);
  return handle;
}

std::wstring module_path() {
  // The system cuts a path that does not fit without saying how long it is.
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module_handle(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace corvelle
