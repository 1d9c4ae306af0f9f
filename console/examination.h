// console/examination.h - what is right and wrong with the component on this machine, as data.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "console/registering.h"

namespace corvelle::console {

enum class Bitness { k32 = 32, k64 = 64 };
inline constexpr Bitness kOwnBitness = sizeof(void*) == 8 ? Bitness::k64 : Bitness::k32;

enum class Finding {
  // Remarks: nothing has to be done.
  registered,         // `text` is the file
  works,              // both classes were created and answered
  not_tried,          // this package's program of the other bitness was not there to create them
  not_registered,     // in this bitness, while the other one is
  hidden_by_user,     // this user's registration goes before the machine's, which is of another file, `text`
  differs_from_ours,  // the registered file is not the same as the one beside this program
  // Problems.
  first_problem,
  missing = first_problem,  // not registered where it has to be
  stale_path,               // the folder of the registered file, `text`, is not there
  missing_file,             // the folder is there, the file is not
  damaged_file,             // the file is no DLL
  wrong_bitness,            // the file is of the other bitness
  incomplete,               // the key `text`, or its value, is missing or names something else
  damaged_type_library,     // in the file `text`; not looked for in a user's file where this program is elevated
  unregistered_type_library,
  passed_by,      // registered for this user only, and not used by this program
  cannot_create,  // `result` says why
  fails,          // created, but a call failed or gave a wrong answer
};

constexpr bool is_problem(Finding finding) { return finding >= Finding::first_problem; }

// One finding, and what it is about.
struct Observation {
  Finding finding;
  Bitness bitness;
  Scope scope = Scope::machine;
  std::wstring text = {};
  HRESULT result = S_OK;
};

// Examines the registrations that programs of `only`, or else of both bitnesses, see on this machine. A single bitness
// that is not registered is a problem where it was asked for.
std::vector<Observation> examine(std::optional<Bitness> only);

// Creates both classes and calls one operation of each, in this process: S_OK, or what went wrong. Where that was a
// call, the result has kInCall set.
inline constexpr HRESULT kInCall = 0x20000000;
HRESULT try_out();

}  // namespace corvelle::console
