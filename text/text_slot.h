// text/text_slot.h - the one text that callers leave with the system: a slot for each thread.
#pragma once

#include <string_view>

#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// Stores `StrNo` in the calling thread's slot, in place of what it held. Every caller on this thread sees it, no other
// thread does.
//   Set_Str(u"A-01"); Get_Str() == u"A-01"
Error Set_Str(std::u16string_view StrNo);

// A copy of what the calling thread's slot holds; the empty text before the thread's first Set_Str.
Result<Text> Get_Str();

}  // namespace corvelle
