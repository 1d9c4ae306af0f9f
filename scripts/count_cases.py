"""Counts test cases in a JUnit file that CTest wrote with the programs' whole output; prints "PASSED FAILED SKIPPED".

A GoogleTest program counts as the cases that it really ran, and as one failure more where it failed without a failed
case: a crash, a time-out, a leak. Any other program counts as one case; one that is missing is a failure.
"""

import re
import sys
import xml.etree.ElementTree

CASE = re.compile(r"\[ +(OK|FAILED|SKIPPED) +\] .* \(\d+ ms\)\r?$", re.MULTILINE)
RUNNING = re.compile(r"^\[=+\] Running \d+ tests? from ", re.MULTILINE)
WAYS = ("OK", "FAILED", "SKIPPED")


def of_program(test):
    """How the cases of one program ended, each as one of WAYS."""
    output = test.findtext("system-out") or ""
    ended = CASE.findall(output)
    status = test.get("status")
    if status == "fail":
        return ended if "FAILED" in ended else [*ended, "FAILED"]
    if status == "run":
        return ended if RUNNING.search(output) else ["OK"]
    skipped = test.find("skipped")
    meant = status == "disabled" or (skipped is not None and skipped.get("message", "").startswith("SKIP_"))
    return ["SKIPPED" if meant else "FAILED"]


def main():
    ended = [way for test in xml.etree.ElementTree.parse(sys.argv[1]).iter("testcase") for way in of_program(test)]
    print(*(ended.count(way) for way in WAYS))


if __name__ == "__main__":
    main()
