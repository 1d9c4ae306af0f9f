"""Fails where something of the compiler's C++ runtime is linked into the DLL.

usage: link_map.py CORVELLE.MAP

Such a part would need what the oldest Windows lacks, or meet another one in the host's process.
"""

import pathlib
import re
import sys

# What must not be in it, as the linker's map names it: archives, start-up objects, functions, tables.
FOREIGN = {
    "the C++ library": re.compile(r"lib(?:stdc|supc)\+\+[\w.-]*\.a\b"),
    "the unwinder": re.compile(r"libgcc_eh\.a\b|\b_?_Unwind_\w+"),
    "start-up code that registers frames": re.compile(r"\bcrtbegin\w*\.o\b|\b_*(?:de)?register_frame\w*"),
    "exceptions": re.compile(r"\b_*cxa_(?:throw|allocate_exception|begin_catch|rethrow)\b|\b_*gxx_personality\w*"),
    "type information": re.compile(r"(?<![A-Za-z0-9])_?_ZT[IS]\w+|typeinfo (?:name )?for "),
    "guards of static objects": re.compile(r"\b_*cxa_guard_\w+"),
    "thread support": re.compile(r"pthread|__gthr_"),
}

# Lines of other maps, each of which has to be found.
PLANTED = (
    "/usr/lib/gcc/x86_64-w64-mingw32/12-win32/libstdc++.a(functexcept.o)",
    "/usr/lib/gcc/x86_64-w64-mingw32/12-win32/libsupc++.a(eh_throw.o)",
    "/usr/lib/gcc/i686-w64-mingw32/12-win32/libgcc_eh.a(unwind-dw2-fde.o)",
    " .text          0x6f701000 0x90 /usr/lib/gcc/i686-w64-mingw32/12-win32/crtbegin.o",
    "                0x6f7010f0                ___register_frame_info",
    "                0x6f7010f0                __cxa_throw",
    " .rdata$_ZTIN8corvelle5ErrorE",
    "                0x6f7010f0                typeinfo for corvelle::Error",
    "                0x6f7010f0                __cxa_guard_acquire",
    "/usr/lib/libwinpthread.a(thread.o)",
)


def linked(link_map):
    """The lines of the map that speak of what is in the DLL, not of what was left out."""
    archives, _, rest = link_map.partition("\nDiscarded input sections\n")
    return (archives + rest.partition("\nMemory Configuration\n")[2]).splitlines()


def foreign_parts(lines):
    return [f"{what}: {line.strip()}" for line in lines for what, pattern in FOREIGN.items() if pattern.search(line)]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    missed = [line for line in PLANTED if not foreign_parts([line])]
    if missed:
        sys.exit("not found where it was planted: " + missed[0])
    lines = linked(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8", errors="replace"))
    for expected in ("dllcrt2.o", "classes.cpp.obj", "code_units.cpp.obj"):
        if not any(expected in line for line in lines):
            sys.exit(f"{sys.argv[1]} is no map of the DLL: it does not name {expected}")
    found = foreign_parts(lines)
    print("\n".join(found))
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
