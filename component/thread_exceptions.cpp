#include "component/thread_exceptions.h"

#include <windows.h>

#include <cxxabi.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <utility>

namespace corvelle {
namespace {

// One thread's note, laid out as the runtime's ABI has it.
struct Note {
  void* caught = nullptr;
  unsigned int uncaught = 0;
};

struct Place {
  Note note;  // first, so that a note's address is its place's
  std::atomic<bool> taken = false;
};

// Enough for as many threads that live at once and have seen an exception; for those beyond, the heap.
constexpr std::size_t kPlaces = 512;

std::array<Place, kPlaces> places;
DWORD note_index = TLS_OUT_OF_INDEXES;

bool in_a_place(const Note* note) {
  const auto* place = reinterpret_cast<const Place*>(note);
  return place >= places.data() && place < places.data() + places.size();
}

Note* take_place() {
  for (Place& place : places) {
    if (!place.taken.exchange(true)) return &place.note;
  }
  return static_cast<Note*>(std::calloc(1, sizeof(Note)));
}

Note* own_note() noexcept { return static_cast<Note*>(TlsGetValue(note_index)); }

Note* make_own_note() noexcept {
  Note* note = take_place();
  if (note == nullptr || TlsSetValue(note_index, note) == FALSE) std::abort();
  return note;
}

}  // namespace

bool attach_thread_exceptions() noexcept {
  note_index = TlsAlloc();
  return note_index != TLS_OUT_OF_INDEXES;
}

void detach_thread_exceptions() noexcept {
  Note* note = own_note();
  if (note == nullptr) return;
  TlsSetValue(note_index, nullptr);
  if (in_a_place(note)) {
    reinterpret_cast<Place*>(note)->taken = false;
  } else {
    std::free(note);
  }
}

void detach_all_thread_exceptions() noexcept { TlsFree(std::exchange(note_index, TLS_OUT_OF_INDEXES)); }

}  // namespace corvelle

namespace __cxxabiv1 {

extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept {
  return reinterpret_cast<__cxa_eh_globals*>(corvelle::own_note());
}

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept {
  corvelle::Note* note = corvelle::own_note();
  if (note == nullptr) note = corvelle::make_own_note();
  return reinterpret_cast<__cxa_eh_globals*>(note);
}

}  // namespace __cxxabiv1
