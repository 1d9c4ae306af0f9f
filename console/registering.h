// console/registering.h - corvelle register, corvelle unregister
#pragma once

#include "console/language.h"
#include "console/output.h"

namespace corvelle::console {

enum class Scope { machine, user };

// Registers the DLL beside this program for everyone or for this user, or takes that back, and says so.
ExitStatus register_component(Scope scope, Language language, const Streams& streams);
ExitStatus unregister_component(Scope scope, Language language, const Streams& streams);

}  // namespace corvelle::console
