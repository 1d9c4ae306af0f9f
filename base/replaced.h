// base/replaced.h - a text with one character replaced throughout.
#pragma once

#include <string_view>

#include "base/text.h"

namespace corvelle {

// `text` with every `unit` replaced by `replacement`, which may be empty or longer than one character and is not looked
// through again.
//   replaced(u"a-b", u'-', u"--") == u"a--b", replaced(u"a-b", u'-', u"") == u"ab"
// It has failed where the result is too long for memory.
Text replaced(std::u16string_view text, char16_t unit, std::u16string_view replacement);

}  // namespace corvelle
