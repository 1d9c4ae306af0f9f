// base/upper_case.h - the platform's upper-casing of one character.
#pragma once

namespace corvelle {

// The upper-case form of `character` by the platform's own mapping, itself where it has none.
//   upper_case(u'a') == u'A', upper_case(u'ä') == u'Ä', upper_case(u'中') == u'中'
char16_t upper_case(char16_t character);

}  // namespace corvelle
