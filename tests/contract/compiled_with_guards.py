"""Fails where a part of the product is compiled without the stack protector, or with exceptions.

usage: compiled_with_guards.py BUILD.NINJA
"""

import pathlib
import re
import sys

# Where the build makes the product's objects; benchmarks and tests compile some of the sources once more.
PRODUCT = ("base", "text", "datenum", "data", "component", "console")

# What all of it is compiled with; the console tool, whose argument parser throws, needs the first alone.
GUARD = re.compile("-fstack-protector(-strong)?")
WITHOUT_RUNTIME = [re.compile(flag) for flag in ("-fno-exceptions", "-fno-rtti", "-fno-threadsafe-statics")]
MAY_THROW = re.compile("console/CMakeFiles/corvelle_console[.]dir/")


def compilations(ninja):
    """Each object of the product, with the flags that it is compiled with."""
    for block in ninja.split("\n\n"):
        made = re.search(r"^build (\S+): CXX_COMPILER__", block, re.MULTILINE)
        flags = re.search(r"^  FLAGS = (.*)$", block, re.MULTILINE)
        if made and flags and made[1].split("/")[0] in PRODUCT:
            yield made[1], flags[1].split()


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    product = dict(compilations(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")))
    if len(product) < 50:
        sys.exit(f"only {len(product)} objects of the product were found")
    missing = [(name, wanted.pattern) for name, flags in product.items()
               for wanted in ([GUARD] if MAY_THROW.match(name) else [GUARD, *WITHOUT_RUNTIME])
               if not any(wanted.fullmatch(flag) for flag in flags)]
    for name, flag in missing:
        print(f"{name} is compiled without {flag}")
    sys.exit(1 if missing else 0)


if __name__ == "__main__":
    main()
