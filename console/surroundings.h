// console/surroundings.h - whom this program may trust: its own rights, and where modules come from.
#pragma once

namespace corvelle::console {

// Whether this program has rights that the user's other programs may not have: it was started as administrator or, on
// Windows XP, by one. What a user registered is not to run in it. True also where that cannot be found out.
bool is_elevated();

// From now on a module that is named without a path is looked for in the system's own folders, not in the current one.
void take_modules_from_system_only();

}  // namespace corvelle::console
