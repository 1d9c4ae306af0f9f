"""The Markdown pages of docs/: their sections, their blocks of code, and the examples in those.

An example is a line of a vbs block: a call, then its result as a comment.
    validate.GetByte_Pf("中a", 0)   ' 3
    validate.getStr_Pf("a", 1, ",")   ' error 5
An example may keep its result in a variable: columns = validate.GetByte_Pf("中a", 0). A line without a comment is a
statement that must end without an error. A block that begins with Class, Function or Sub defines what the examples of
its page use.
"""

import dataclasses
import pathlib
import re
import sys

CHECKOUT = pathlib.Path(__file__).resolve().parent.parent
REFERENCE = CHECKOUT / "docs" / "reference"
GUIDES = CHECKOUT / "docs" / "guides"
CHINESE = ".zh-CN.md"

DEFINITION = re.compile(r"(Class|Function|Sub)\b")
ASSIGNMENT = re.compile(r"^\w+ = ")
RESULT = re.compile(r'"(?:[^"]|"")*"|-?\d+(?:\.\d+)?|True|False|Empty|error -?\d+')


class PageError(Exception):
    """A page does not have the form that it must have."""


@dataclasses.dataclass
class Block:
    """A fenced block: its language, its lines, and the number of the first of them in the page."""

    language: str
    lines: list
    first_line: int
    section: str  # the text of the last heading of the second level

    def text(self):
        return "".join(line + "\n" for line in self.lines)


@dataclasses.dataclass
class Example:
    """One line that runs; `result` is None for a statement."""

    page: pathlib.Path
    line: int
    section: str
    code: str
    result: str | None

    def call(self):
        """The code without the variable that it keeps its result in."""
        return ASSIGNMENT.sub("", self.code)

    def place(self):
        return f"{self.page.relative_to(CHECKOUT)}:{self.line}"


def english_pages(folder):
    return sorted(page for page in folder.glob("*.md") if not page.name.endswith(CHINESE))


def chinese(page):
    return page.with_name(page.stem + CHINESE)


def blocks(page):
    found, fence, section = [], None, ""
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("```"):
            if fence is None:
                fence = Block(line[3:].strip(), [], number + 1, section)
            else:
                found.append(fence)
                fence = None
        elif fence is not None:
            fence.lines.append(line)
        elif line.startswith("## "):
            section = line[3:].strip()
    if fence is not None:
        raise PageError(f"{page.name}:{fence.first_line}: the block has no end")
    return found


def split_comment(line):
    """The code of a line of VBScript and its comment, None where it has none."""
    quoted = False
    for place, character in enumerate(line):
        if character == '"':
            quoted = not quoted
        elif character == "'" and not quoted:
            return line[:place].rstrip(), line[place + 1 :].strip()
    return line.rstrip(), None


def is_definition(block):
    return block.language == "vbs" and block.lines != [] and DEFINITION.match(block.lines[0]) is not None


def definitions(page):
    return "".join(block.text() for block in blocks(page) if is_definition(block))


def examples(page):
    found = []
    for block in blocks(page):
        if block.language != "vbs" or is_definition(block):
            continue
        for number, line in enumerate(block.lines, block.first_line):
            code, comment = split_comment(line)
            if not code:
                continue
            if comment is not None and not RESULT.fullmatch(comment):
                raise PageError(f"{page.name}:{number}: {comment!r} is no result")
            found.append(Example(page, number, block.section, code.strip(), comment))
    return found


def programs(page, language):
    """The blocks of a guide in that language, each of which is a whole program."""
    return [block.text() for block in blocks(page) if block.language == language]


def output(page):
    """What the programs of a guide are said to write: its one block of text."""
    (text,) = programs(page, "text")
    return text


if __name__ == "__main__":
    # pages.py PAGE LANGUAGE NUMBER FILE: writes the NUMBER-th program, counted from 0, for those who compile it.
    guide, program_language, program_number, file = sys.argv[1:]
    program = programs(pathlib.Path(guide), program_language)[int(program_number)]
    pathlib.Path(file).write_text(program, encoding="utf-8")
