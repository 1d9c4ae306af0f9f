"""Writes the signatures and the table of operations into the pages of docs/reference, or checks the pages of docs/.

    reference.py write    rewrites what stands between the markers
    reference.py check    fails where that would change a page, and for every other rule that a page breaks

Names, types, DISPIDs and defaults come from tests/contract/contract.txt, which a test compares with the built DLLs.
"""

import dataclasses
import re
import sys

sys.dont_write_bytecode = True  # the checkout stays as it is
import pages  # noqa: E402

CONTRACT = pages.CHECKOUT / "tests" / "contract" / "contract.txt"
LEAST_EXAMPLES = 3

# The automation types of the contract, as Visual Basic and C++ write them.
TYPES = {
    "string": ("String", "BSTR"),
    "double": ("Double", "double"),
    "int16": ("Integer", "SHORT"),
    "int32": ("Long", "LONG"),
    "date": ("Date", "DATE"),
    "boolean": ("Boolean", "VARIANT_BOOL"),
    "variant": ("Variant", "VARIANT"),
}
DATABASE = ("Database", "Database*")
HEADINGS = {
    "en": ("Operation", "Class", "DISPID", "What it does"),
    "zh": ("操作", "类", "DISPID", "作用"),
}


@dataclasses.dataclass
class Parameter:
    name: str
    types: tuple
    default: str | None
    by_reference: bool

    def basic(self):
        way = "ByRef" if self.by_reference else "ByVal"
        optional = "Optional " if self.default is not None else ""
        default = f" = {self.default}" if self.default is not None else ""
        return f"{optional}{way} {self.name} As {self.types[0]}{default}"

    def cpp(self):
        return f"{self.types[1]}{'*' if self.by_reference else ''} {self.name}"


@dataclasses.dataclass
class Operation:
    class_name: str
    name: str
    dispid: str
    slot: str
    parameters: list
    result: tuple | None

    def key(self):
        return f"{self.class_name}.{self.name}"

    def signature(self):
        basic = ", ".join(parameter.basic() for parameter in self.parameters)
        kind, result = ("Sub", "") if self.result is None else ("Function", f" As {self.result[0]}")
        cpp = [parameter.cpp() for parameter in self.parameters]
        if self.result is not None:
            cpp.append(f"{self.result[1]}* result")
        return (
            f"```vb\n' {self.class_name}, DISPID &H{self.dispid}, vtable slot {self.slot}\n"
            f"{kind} {self.name}({basic}){result}\n```\n\n"
            f"```cpp\nHRESULT {self.name}({', '.join(cpp)});\n```\n"
        )


MEMBER = re.compile(r"  slot (\d+)  ([0-9A-F]{8})  HRESULT (\w+)\(\n(.*?)\)\n      \S", re.DOTALL)
PARAMETER = re.compile(r"\[([a-z ]+)\] (\w+|<.*>)(\*?)(?: (\w+))?(?: = (.*))?")


def parameters_of(text):
    """The parameters in a member's declaration, and the types of its result."""
    found, result = [], None
    for line in text.strip().rstrip(",").split(",\n"):
        match = PARAMETER.fullmatch(line.strip())
        flags, type_name, star, name, default = match.groups()
        types = TYPES.get(type_name, DATABASE)
        if "retval" in flags:
            result = types
        else:
            found.append(Parameter(name, types, default, bool(star) and types is not DATABASE))
    return found, result


def operations():
    library = CONTRACT.read_text(encoding="utf-8").split("[type library]\n")[1].split("[version resource]\n")[0]
    found = []
    for interface in re.split(r"^interface _", library, flags=re.MULTILINE)[1:]:
        class_name = interface.split()[0]
        for slot, dispid, name, text in MEMBER.findall(interface):
            found.append(Operation(class_name, name, dispid, slot, *parameters_of(text)))
    return found


def markers(name):
    return re.compile(rf"<!-- {name} -->\n(.*?)<!-- end of {name.split(':')[0]} -->\n", re.DOTALL)


def with_signatures(text, known):
    for key in re.findall(r"<!-- signature: (\S+) -->", text):
        if key not in known:
            raise pages.PageError(f"there is no operation {key}")
        block = f"<!-- signature: {key} -->\n{known[key].signature()}<!-- end of signature -->\n"
        text, count = markers(f"signature: {re.escape(key)}").subn(lambda _: block, text)
        if count != 1:
            raise pages.PageError(f"{key} has {count} signatures with an end")
    return text


def sections(text):
    """The sections of a page by the operations whose signatures they hold: heading, first paragraph."""
    found = {}
    for section in re.split(r"^## ", text, flags=re.MULTILINE)[1:]:
        heading, body = section.split("\n", 1)
        summary = " ".join(body.strip().split("\n\n")[0].split("\n"))
        for key in re.findall(r"<!-- signature: (\S+) -->", section):
            found[key] = (heading.strip(), summary)
    return found


def anchor(heading):
    """The fragment that a heading is reached by, as hosts of Markdown make it."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def table(language, texts):
    """The table of all operations, from the pages' `texts` by page."""
    where = {key: (page, *section) for page, text in texts.items() for key, section in sections(text).items()}
    rows = [f"| {' | '.join(HEADINGS[language])} |", "|---|---|---|---|"]
    for operation in operations():
        if operation.key() not in where:
            raise pages.PageError(f"no page of {language} has {operation.key()}")
        page, heading, summary = where[operation.key()]
        link = f"[`{operation.name}`]({page.name}#{anchor(heading)})"
        rows.append(f"| {link} | `{operation.class_name}` | `{operation.dispid}` | {summary} |")
    return "\n".join(rows) + "\n"


def made():
    """What each page of the reference has to be: page to text."""
    known = {operation.key(): operation for operation in operations()}
    result = {}
    for language in HEADINGS:
        every = [page if language == "en" else pages.chinese(page) for page in pages.english_pages(pages.REFERENCE)]
        texts = {}
        for page in every:
            try:
                texts[page] = with_signatures(page.read_text(encoding="utf-8"), known)
            except pages.PageError as error:
                raise pages.PageError(f"{page.name}: {error}") from error
        index = every[[page.name.startswith("README.") for page in every].index(True)]
        block = f"<!-- operations -->\n{table(language, texts)}<!-- end of operations -->\n"
        texts[index] = markers("operations").sub(lambda _, block=block: block, texts[index])
        result.update(texts)
    return result


def complaints_about_examples():
    for page in pages.english_pages(pages.REFERENCE):
        known = pages.examples(page)
        for key, (heading, _) in sections(page.read_text(encoding="utf-8")).items():
            name = key.split(".")[1]
            count = sum(
                example.section == heading and example.result is not None and f".{name}" in example.code
                for example in known
            )
            if count < LEAST_EXAMPLES:
                yield f"{page.name}: {key} has {count} examples with a result, fewer than {LEAST_EXAMPLES}"


def complaints_about_twins():
    """Both languages have the same pages, and these the same blocks of code."""
    readme = pages.CHECKOUT / "README.md"
    if pages.programs(readme, "vbs") != pages.programs(pages.chinese(readme), "vbs"):
        yield "README.zh-CN.md: other examples than README.md"
    for folder in (pages.REFERENCE, pages.GUIDES):
        english = pages.english_pages(folder)
        expected = {page.name for page in english} | {pages.chinese(page).name for page in english}
        for name in sorted(expected.symmetric_difference(page.name for page in folder.glob("*.md"))):
            yield f"{name}: missing, or without its English page"
        for page in english:
            if not pages.chinese(page).exists():
                continue
            ours, theirs = ([line for block in pages.blocks(which) for line in (f"```{block.language}", *block.lines)]
                            for which in (page, pages.chinese(page)))
            if ours != theirs:
                line = next((a for a, b in zip(ours, theirs) if a != b), "one has more")
                yield f"{pages.chinese(page).name}: other code than {page.name}: {line}"


def complaints_about_python():
    """No Python for Windows is at hand to run the guide's program, but it has to be Python."""
    page = pages.GUIDES / "python.md"
    for program in pages.programs(page, "python"):
        try:
            compile(program, page.name, "exec")
        except SyntaxError as error:
            yield f"{page.name}: {error}"


def packaged():
    """What the package holds, as paths in the checkout; a folder stands for all that is in it."""
    lines = (pages.CHECKOUT / "packaging" / "contents").read_text(encoding="utf-8").splitlines()
    return [pages.CHECKOUT / line.split()[1] for line in lines if line.strip() and not line.startswith("#")]


def holds(places, path):
    return any(path == place or place in path.parents for place in places)


def headings_of(page):
    lines = page.read_text(encoding="utf-8").splitlines()
    return {anchor(line.lstrip("#").strip()) for line in lines if line.startswith("#")}


def fault_of_link(page, target, headings, package):
    """What is wrong with a page's link, None where nothing is."""
    path, _, fragment = target.partition("#")
    goal = (page.parent / path).resolve() if path else page
    if not goal.exists():
        return "leads nowhere"
    if page.parent != pages.CHECKOUT and holds(package, page) and not holds(package, goal):
        return "leads out of the package"
    if fragment and fragment not in headings.get(goal, ()):
        return "names no heading there"
    return None


def complaints_about_links():
    """Links lead somewhere, those of pages in the package into the package."""
    package = packaged()
    documents = [*pages.CHECKOUT.glob("*.md"), *sorted(pages.CHECKOUT.glob("docs/**/*.md"))]
    headings = {page: headings_of(page) for page in documents}
    for page in documents:
        for target in re.findall(r"\]\(([^)\s]+)\)", page.read_text(encoding="utf-8")):
            fault = fault_of_link(page, target, headings, package)
            if fault is not None:
                yield f"{page.relative_to(pages.CHECKOUT)}: the link {target} {fault}"


def check():
    stale = [page for page, text in made().items() if page.read_text(encoding="utf-8") != text]
    complaints = [f"{page.name}: out of date; run scripts/reference" for page in stale]
    for find in (complaints_about_examples, complaints_about_twins, complaints_about_python, complaints_about_links):
        complaints.extend(find())
    print("\n".join(complaints) or f"{len(operations())} operations, {len(made())} pages, nothing to complain about")
    return 1 if complaints else 0


def write():
    for page, text in made().items():
        if page.read_text(encoding="utf-8") != text:
            page.write_text(text, encoding="utf-8", newline="\n")
            print(f"wrote {page.relative_to(pages.CHECKOUT)}")
    return 0


if __name__ == "__main__":
    ways = {"write": write, "check": check}
    if len(sys.argv) != 2 or sys.argv[1] not in ways:
        sys.exit(__doc__)
    try:
        sys.exit(ways[sys.argv[1]]())
    except pages.PageError as error:
        sys.exit(str(error))
