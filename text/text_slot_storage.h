// text/text_slot_storage.h - where the threads' text slots live; the platform's twin files say how.
#pragma once

#include <string_view>

#include "base/text.h"

namespace corvelle {

// What the calling thread's slot holds, valid until the next store on this thread; empty before the first.
std::u16string_view slot_content() noexcept;

// Puts `content` into the calling thread's slot. False where there is no memory for one.
bool store_in_slot(Text&& content) noexcept;

}  // namespace corvelle
