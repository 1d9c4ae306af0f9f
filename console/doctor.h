// console/doctor.h - corvelle doctor
#pragma once

#include <optional>

#include "console/examination.h"
#include "console/language.h"
#include "console/output.h"

namespace corvelle::console {

// Says in words what is right and wrong with the component on this machine and what to do about it; with `full` runs
// one known case of every operation, too. ok when nothing is wrong.
ExitStatus examine_machine(std::optional<Bitness> only, bool full, Language language, const Streams& streams);

}  // namespace corvelle::console
