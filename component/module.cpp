#include "component/module.h"

#include <atomic>

#include "base/wide_windows.h"

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

Text module_path() noexcept {
  // The system cuts a path that does not fit without saying how long it is.
  Text path = Text::of_length(MAX_PATH);
  while (!path.failed()) {
    const auto room = static_cast<DWORD>(path.size());
    const DWORD length = GetModuleFileNameW(module_handle(), as_wide(path.data()), room);
    if (length < room) {
      path.keep_first(length);
      return path;
    }
    path = Text::of_length(2 * path.size());
  }
  return path;
}

}  // namespace corvelle
