// text/text_slot_storage.h - where the threads' text slots live; the platform's twin files say how.
#pragma once

#include <string_view>

#include "base/text.h"

namespace corvelle {

// What the calling thread's slot holds, valid until the next store on this thread; empty before the first.
std::u16string_view slot_content() noexcept;

// Puts `content` into the calling thread's slot. Throws std::bad_alloc where the thread cannot have one.
void store_in_slot(Text content);

}  // namespace corvelle
