// What the table of an abstract class leads to in place of a member. Nothing comes here; the compiler's library would
// bring its own, with its way of ending a program.
extern "C" [[noreturn]] void __cxa_pure_virtual() { __builtin_trap(); }  // NOLINT(bugprone-reserved-identifier)
