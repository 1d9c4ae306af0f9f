// Parts of the C++ runtime that the linker takes from here instead of from the compiler's library, where they would
// bring a third of the DLL's size with them: the exceptions of logic_error's family, whose messages need two kinds of
// narrow string and through them printf, and a handler for uncaught exceptions that prints their demangled names.
//
// Nothing of that is ever seen: every exception ends at the boundary (boundary.h), which knows bad_alloc and takes any
// other as unforeseen, and the guarded code has no console.
#include <cstdlib>
#include <exception>
#include <new>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the library's own
namespace std {

// What a string or a vector that cannot grow further asks for; more memory than there is.
[[noreturn]] void __throw_length_error(const char* /*message*/) { throw bad_alloc(); }
[[noreturn]] void __throw_bad_alloc() { throw bad_alloc(); }
[[noreturn]] void __throw_bad_array_new_length() { throw bad_array_new_length(); }

// Mistakes of the program.
[[noreturn]] void __throw_logic_error(const char* /*message*/) { throw exception(); }
[[noreturn]] void __throw_out_of_range_fmt(const char* /*format*/, ...) { throw exception(); }

}  // namespace std

// A call of a member that a class leaves to those derived from it; the library's own would open the console.
extern "C" [[noreturn]] void __cxa_pure_virtual() { std::abort(); }
// NOLINTEND(bugprone-reserved-identifier)

namespace __gnu_cxx {

void __verbose_terminate_handler() { std::abort(); }

}  // namespace __gnu_cxx
