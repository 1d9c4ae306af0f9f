"""Fails where docs/platform.md has a gap.

usage: ledger.py CHECKOUT PROGRAM…

Every function that the contract or one of the programs says is imported stands in the first column of a row, and every
name there is imported or used by the product. Every file and every test that a row names exists. Every row says what
vouches for Windows: a page by its title, lines of a conformance test, or "nothing".
"""

import pathlib
import re
import subprocess
import sys

COLUMNS = ["of", "assumed", "rests on it", "asserted by", "vouched for by"]
PRODUCT = ("base", "text", "datenum", "data", "component", "console", "tools", "packaging")
NONE = "none"  # no test asserts it
WITNESS = re.compile(r'^nothing\b|"[^"]+"|`\w+/\w+\.(?:c|vbs):\d+`')


def imports_in_contract(text):
    """The indented names below each line that begins with "import"."""
    return {name for block in re.findall(r"^import .*\n((?:  \S+\n)+)", text, re.MULTILINE) for name in block.split()}


def imports_of(program):
    """Behind a function's place stands a number; newer versions first say that it is not imported by one."""
    headers = subprocess.run(["objdump", "-p", program], check=True, capture_output=True, text=True).stdout
    return set(re.findall(r"^\t[0-9a-f]+\s+(?:<none>\s+)?[0-9a-f]+\s+(\w+)$", headers, re.MULTILINE))


def rows_of(page):
    """Each row of each table: its line number and its cells."""
    for number, line in enumerate(page.splitlines(), 1):
        if line.startswith("|") and not line.startswith("|---"):
            cells = [cell.strip() for cell in line.strip().strip("|").split(" | ")]
            if cells != COLUMNS:
                yield number, cells


def in_code(cell):
    return re.findall(r"`([^`]+)`", cell)


class Tests:
    """What the tests are called: the cases of each program, and the tests of CTest that are no programs."""

    def __init__(self, checkout):
        self.cases = {}
        self.named = set()
        for lists in checkout.glob("tests/**/CMakeLists.txt"):
            text = lists.read_text(encoding="utf-8")
            self.named.update(re.findall(r"(?:add_test\(NAME|corvelle_isolated_test\() *(\w+)", text))
            programs = re.findall(r"corvelle_test(?:_program)?\((\w+)", text)
            cases = set()
            for source in lists.parent.glob("*.cpp"):
                cases.update(re.findall(r"^TEST(?:_[FP])?\((\w+, *\w+)\)", source.read_text(encoding="utf-8"), re.MULTILINE))
            for program in programs:
                self.cases[program] = {re.sub(", *", ".", case) for case in cases}

    def missing(self, cell):
        """What of `program: Suite.Case, Suite.Case; other: Suite.Case; test` is not there."""
        for part in cell.split("; "):
            program, colon, cases = part.partition(": ")
            if not colon:
                if program not in self.named:
                    yield program
            elif program not in self.cases:
                yield program
            else:
                yield from (case for case in cases.split(", ") if case not in self.cases[program])


def faults_of_row(cells, checkout, tests, known):
    if len(cells) != len(COLUMNS) or not all(cells):
        yield f"not {len(COLUMNS)} columns with something in each"
        return
    subjects, _, places, asserted, vouched = cells
    for name in in_code(subjects):
        if not known.issuperset(re.findall(r"\w+", name)):
            yield f"{name} is neither imported nor used"
    for place in in_code(places):
        if not (checkout / place).exists():
            yield f"there is no file {place}"
    if asserted != NONE:
        for test in tests.missing(asserted):
            yield f"there is no test {test}"
    if not WITNESS.search(vouched):
        yield f"no page, no assertion and not \"nothing\": {vouched}"


def words_of_product(checkout):
    """Every word of the product's own files."""
    files = [file for folder in PRODUCT for file in (checkout / folder).rglob("*") if file.is_file()]
    return {word for file in files for word in re.findall(r"\w+", file.read_text(encoding="utf-8", errors="replace"))}


def expect_many(what, found):
    """Whoever finds next to nothing looked at the wrong place."""
    if len(found) < 50:
        sys.exit(f"only {len(found)} were found of {what}")


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    checkout = pathlib.Path(sys.argv[1])
    imports = {"the contract": imports_in_contract((checkout / "tests/contract/contract.txt").read_text(encoding="utf-8"))}
    imports |= {program: imports_of(program) for program in sys.argv[2:]}
    rows = list(rows_of((checkout / "docs/platform.md").read_text(encoding="utf-8")))
    for what, found in {**imports, "the page's rows": rows}.items():
        expect_many(what, found)

    imported = set().union(*imports.values())
    known = imported | words_of_product(checkout)
    tests = Tests(checkout)
    faults = [f"docs/platform.md:{number}: {fault}"
              for number, cells in rows for fault in faults_of_row(cells, checkout, tests, known)]
    said = {name for _, cells in rows for name in in_code(cells[0])}
    faults += [f"docs/platform.md: no row has the imported function {name}" for name in sorted(imported - said)]
    print("\n".join(faults) or f"{len(rows)} rows, {len(imported)} imported functions")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
