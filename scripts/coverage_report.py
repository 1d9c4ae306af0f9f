"""coverage_report.py FIGURES EXPLANATIONS - what ran and what did not, from gcovr's JSON.

EXPLANATIONS has blocks: a file's name, then lines "  TEXT OF A LINE  # why it is not run", with * for the rest of the
file. A line that did not run and is not there makes the status 1.
"""

import json
import pathlib
import sys


def explanations(path):
    reasons, name = {}, None
    for line in pathlib.Path(path).read_text().splitlines():
        if line.startswith("  ") and "  # " in line:
            code, reason = line.strip().rsplit("  # ", 1)
            reasons[(name, code)] = reason
        elif line and not line.startswith("#"):
            name = line
    return reasons


def share(hit, all_of_them):
    return f"{hit:5} of {all_of_them:5} {100 * hit / all_of_them if all_of_them else 100:6.1f} %"


def main():
    figures = json.loads(pathlib.Path(sys.argv[1]).read_text())
    reasons = explanations(sys.argv[2])
    totals = [0, 0, 0, 0]
    missed, unexplained, used = [], 0, set()
    print(f"{'':36} {'lines':>23}   {'branches':>23}")
    for file in sorted(figures["files"], key=lambda each: each["file"]):
        source = pathlib.Path(file["file"]).read_text().splitlines()
        lines = [line for line in file["lines"] if not line.get("gcovr/noncode")]
        branches = [branch for line in lines for branch in line["branches"]]
        counts = [sum(line["count"] > 0 for line in lines), len(lines),
                  sum(branch["count"] > 0 for branch in branches), len(branches)]
        totals = [total + count for total, count in zip(totals, counts)]
        print(f"{file['file']:36} {share(*counts[:2])}   {share(*counts[2:])}")
        for line in lines:
            if line["count"] == 0:
                code = source[line["line_number"] - 1].strip()
                key = (file["file"], code if (file["file"], code) in reasons else "*")
                used.add(key)
                reason = reasons.get(key)
                unexplained += reason is None
                missed.append(f"  {file['file']}:{line['line_number']}: {code}\n      {reason or 'NOT EXPLAINED'}")
    print(f"{'all':36} {share(*totals[:2])}   {share(*totals[2:])}\n")
    print(f"{len(missed)} lines did not run, {unexplained} of them without an explanation:")
    print("\n".join(missed))
    for name, code in sorted(set(reasons) - used):
        print(f"  {name}: {code}\n      is explained, but ran, or is no longer there")
    return 0 if unexplained == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
