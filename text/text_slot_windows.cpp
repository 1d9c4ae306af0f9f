#include "text/text_slot_windows.h"

#include <windows.h>

#include <memory>
#include <utility>

#include "base/from_heap.h"
#include "text/text_slot_storage.h"

namespace corvelle {
namespace {

// A thread's slot, a link in the list of all slots: the only way to those of other threads.
struct Slot : FromHeap {
  Text content;
  Slot* previous = nullptr;
  Slot* next = nullptr;
};

DWORD slot_index = TLS_OUT_OF_INDEXES;
CRITICAL_SECTION list_lock;
Slot* first_slot = nullptr;

class ListLock {
 public:
  ListLock() noexcept { EnterCriticalSection(&list_lock); }
  ~ListLock() { LeaveCriticalSection(&list_lock); }
  ListLock(const ListLock&) = delete;
  ListLock& operator=(const ListLock&) = delete;
};

Slot* own_slot() noexcept { return static_cast<Slot*>(TlsGetValue(slot_index)); }

void link(Slot* slot) noexcept {
  const ListLock lock;
  slot->next = first_slot;
  if (first_slot != nullptr) first_slot->previous = slot;
  first_slot = slot;
}

void unlink(const Slot* slot) noexcept {
  const ListLock lock;
  (slot->previous != nullptr ? slot->previous->next : first_slot) = slot->next;
  if (slot->next != nullptr) slot->next->previous = slot->previous;
}

// Null where there is no memory for one.
Slot* add_own_slot() noexcept {
  std::unique_ptr<Slot> slot(new Slot);
  if (slot == nullptr || TlsSetValue(slot_index, slot.get()) == FALSE) return nullptr;
  link(slot.get());
  return slot.release();
}

}  // namespace

std::u16string_view slot_content() noexcept {
  const Slot* slot = own_slot();
  return slot == nullptr ? std::u16string_view() : slot->content.view();
}

bool store_in_slot(Text&& content) noexcept {
  Slot* slot = own_slot();
  if (slot == nullptr) slot = add_own_slot();
  if (slot == nullptr) return false;
  slot->content = std::move(content);
  return true;
}

bool attach_text_slots() noexcept {
  if (InitializeCriticalSectionAndSpinCount(&list_lock, 0) == FALSE) return false;
  slot_index = TlsAlloc();
  if (slot_index != TLS_OUT_OF_INDEXES) return true;
  DeleteCriticalSection(&list_lock);
  return false;
}

void detach_thread_text_slot() noexcept {
  const std::unique_ptr<Slot> slot(own_slot());
  if (slot == nullptr) return;
  TlsSetValue(slot_index, nullptr);
  unlink(slot.get());
}

void detach_text_slots() noexcept {
  while (first_slot != nullptr) delete std::exchange(first_slot, first_slot->next);
  TlsFree(std::exchange(slot_index, TLS_OUT_OF_INDEXES));
  DeleteCriticalSection(&list_lock);
}

}  // namespace corvelle
