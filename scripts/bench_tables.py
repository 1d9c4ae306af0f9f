"""Makes docs/performance.md of what the benchmarks printed: bench_tables.py RESULTS BUILD.

RESULTS holds native.tsv, win32.tsv and win64.tsv, whose lines bench/ratio_table.h describes, and converters.json, which
Google Benchmark wrote. BUILD holds the DLLs.
"""
import collections
import json
import os
import platform
import re
import subprocess
import sys

PLACES = {"native": "native", "win32": "Wine, 32 bits", "win64": "Wine, 64 bits"}

COPYING = ["Center", "GetStr", "getNum", "CharChange", "Replace_Str", "ConversionStr_Long", "ConversionStr_Short", "Get_Str",
           "getString_P", "Set_String1", "Get_String"]

# What is timed, against what, the row's name in the programs, and the bound: at most so many times the peer's time
# ("<="), or at least so many times as fast (">=").
ROWS = [
    ("width of 32,766 characters of ASCII", "plain read of the text", "width of ASCII", "<=", 1.5),
    ("the same of Chinese characters", "plain read", "width of Chinese", "<=", 1.5),
    ("the same of both mixed", "plain read", "width of mixed", "<=", 1.5),
    ("the same of Chinese prose", "plain read", "width of prose", "<=", 2.5),
    ("the same of random code units", "plain read", "width of random units", "<=", 4.5),
    ("the same, all five kinds", "ICU's `windows-936` converter", "ICU", ">=", 10),
    ("the same, all five kinds", "glibc's iconv, per character", "iconv", ">=", 60),
    ("`Invoke` with the declared types, seven operations together", "vtable calls", "Invoke and vtable", "<=", 1.25),
    ("the same, the cheapest operation alone", "vtable call", "Invoke and vtable, each", "<=", 1.25),
    ("`Invoke` with the declared types", "`ITypeInfo::Invoke`", "Invoke and ITypeInfo", ">=", 4),
    ("a failing call, by either binding", "bare error information", "failing call", "<=", 3),
    ("`GetIDsOfNames`", "the type library's own", "GetIDsOfNames", ">=", 8),
    *((f"`{operation}` of 32,766 characters", "copy into a new text", f"a text of 32,766: {operation}", "<=", 6)
      for operation in COPYING),
    ("`getStr_Pf`, field 10,000", "plain loop", "getStr_Pf field 10,000", ">=", 8),
    ("`GetPath` of 32,000 backslashes", "plain loop", "GetPath of 32,000 backslashes", ">=", 20),
    ("`GetDecimalFmt_4` (the slowest text)", "`VarFormat`", "GetDecimalFmt_4, platform", ">=", 5),
    ("`GetDecimalFmt_4` (the slowest text)", "`strtod` + `snprintf`", "GetDecimalFmt_4, C library", ">=", 2),
    ("`dateToStr_Pf`", "`VariantTimeToSystemTime` + `GetDateFormat`", "dateToStr_Pf, GetDateFormat", ">=", 3),
    ("`dateToStr_Pf`", "`gmtime_r` + `snprintf`", "dateToStr_Pf, C library", ">=", 3),
    ("a report row from VBScript", "VBScript alone", "report row", ">=", 5),
    ("create and release an object", "`Scripting.Dictionary`", "creation", "<=", 1),
    ("calls of `GetByte_Pf` a second in two apartments", "in one", "two apartments", ">=", 1.9),
]
NATIVE_ONLY = {"GetDecimalFmt_4, C library", "dateToStr_Pf, C library"}
DETAILS = ["Invoke and vtable, each", "Invoke, the least", "failing call", "a text of 32,766", "long texts, allocation",
           "GetDecimalFmt_4, platform", "GetDecimalFmt_4, no number", "GetDecimalFmt_4, C library",
           "dateToStr_Pf, _snwprintf", "dateToStr_Pf, allocation", "two apartments, others", "GetIDsOfNames", "grid"]
SIZE_BOUND = 300_000


def read(path):
    """The comparisons by row, as (what, peer, subject's time, peer's time), and the tables of times."""
    ratios, times = collections.defaultdict(list), collections.defaultdict(dict)
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            kind, *parts = line.rstrip("\r\n").split("\t")
            if kind == "ratio":
                row, what, peer, subject, peer_time = parts
                comparison = (what, peer, float(subject), float(peer_time))
                ratios[row].append(comparison)
                if row == "a text of 32,766":
                    ratios[f"{row}: {what.split(',')[0]}"].append(comparison)
            elif kind == "time":
                table, operation, length, time = parts
                times[table].setdefault(operation, {})[int(length)] = float(time)
            else:
                sys.exit(f"{path}: not a result: {line}")
    return ratios, times


def read_converters(path):
    times = {}
    with open(path, encoding="utf-8") as file:
        for result in json.load(file)["benchmarks"]:
            subject, kind, _ = result["name"].split("/")
            times[subject, kind] = result["cpu_time"]
    rows = collections.defaultdict(list)
    for (subject, kind), time in times.items():
        for row, peer in (("ICU", "ICU windows-936"), ("iconv", "iconv by character")):
            if subject == peer:
                rows[row].append((kind, peer, times["sumByte_Pf", kind], time))
    return rows


def figure(comparisons, direction):
    """The worst of a row's comparisons."""
    if direction == "<=":
        return max(subject / peer for _, _, subject, peer in comparisons)
    return min(peer / subject for _, _, subject, peer in comparisons)


def row_of_table(row, results):
    what, against, name, direction, bound = row
    cells, met = [], []
    for place in PLACES:
        comparisons = results[place][0].get(name)
        if not comparisons or (name in NATIVE_ONLY and place != "native"):
            cells.append("–")
            continue
        value = round(figure(comparisons, direction), 2)  # no run tells more
        met.append(value <= bound if direction == "<=" else value >= bound)
        cells.append(f"{value:.2f}" if met[-1] else f"**{value:.2f}**")
    if not met:
        sys.exit(f"nothing was measured of: {name}")
    limit = f"at most {bound:g} times" if direction == "<=" else f"at least {bound:g} times faster"
    if name == "two apartments":
        limit = f"at least {bound:g} times"
    return [what, against, limit, *cells, "yes" if all(met) else "**no**"]


def size_row(build):
    sizes = [os.path.getsize(os.path.join(build, place, "Corvelle.dll")) for place in ("win32", "win64")]
    met = [size < SIZE_BOUND for size in sizes]
    return ["size of the DLL", "", f"below {SIZE_BOUND:,} bytes", "–", *(f"{size:,}" for size in sizes),
            "yes" if all(met) else "**no**"]


def table(head, rows):
    return "\n".join("| " + " | ".join(row) + " |" for row in (head, ["---"] * len(head), *rows))


def times_table(times, lengths):
    rows = [[name, *(f"{by_length[n]:,.0f}" if n in by_length else "–" for n in lengths)]
            for name, by_length in times.items()]
    return table(["nanoseconds at", *(f"{n:,}" for n in lengths)], rows)


def growth_table(times):
    """With how many times longer the longest text took than one of a 32nd of its length, 32 where growth is linear."""
    lengths = [1000, 4000, 16000, 32000]
    rows = [[name, *(f"{by_length[n]:,.0f}" for n in lengths), f"{by_length[32000] / by_length[1000]:.0f}"]
            for name, by_length in times.items()]
    return table(["nanoseconds at", *(f"{n:,}" for n in lengths), "32,000 / 1,000"], rows)


def short_table(times):
    lengths = [1, 8, 40]
    rows = []
    for name, by_length in times["short"].items():
        before = times["before"].get(name, {})
        cells = []
        for n in lengths:
            now = f"{by_length[n]:.1f}" if n in by_length else "–"
            cells.append(f"{before[n]:.1f} → {now}" if n in before else now)
        rows.append([name, *cells])
    return table(["nanoseconds at", *map(str, lengths)], rows)


def detail_table(results):
    rows = []
    for name in DETAILS:
        by_what = collections.defaultdict(dict)
        for place in PLACES:
            if name in NATIVE_ONLY and place != "native":
                continue
            for what, peer, subject, peer_time in results[place][0].get(name, []):
                by_what[what, peer][place] = f"{subject / peer_time:.3f}"
        rows += [[what, peer, *(by_place.get(place, "–") for place in PLACES)]
                 for (what, peer), by_place in by_what.items()]
    return table(["what", "against", *PLACES.values()], rows)


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def machine():
    processor = re.search(r"Model name:\s*(.*)", output_of("lscpu")).group(1)
    compiler = output_of("g++", "-dumpfullversion").strip()
    windows_compiler = output_of("x86_64-w64-mingw32-g++-win32", "-dumpfullversion").strip()
    vectors = "with" if " avx2" in output_of("lscpu") else "without"
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    load = os.getloadavg()[1]
    return (f"{processor}, {os.cpu_count()} processors, {vectors} AVX2; Linux {platform.release()}; GCC {compiler}, "
            f"for Windows {windows_compiler}; Wine of {system}. Load of the machine around the run: {load:.1f}.")


def main():
    folder, build = sys.argv[1:]
    results = {place: read(os.path.join(folder, place + ".tsv")) for place in PLACES}
    results["native"][0].update(read_converters(os.path.join(folder, "converters.json")))
    rows = [row_of_table(row, results) for row in ROWS] + [size_row(build)]
    head = ["what", "against", "to reach", *PLACES.values(), "reached"]
    narrow = {row: lines for row, lines in results["native"][0].items() if row.endswith("16-byte vectors")}
    narrow_rows = [[row.removesuffix(", 16-byte vectors"),
                    *(f"{figure(results[place][0].get(row, [('', '', float('nan'), 1)]), '<='):.2f}"
                      for place in PLACES)] for row in narrow]
    with open(os.path.join(os.path.dirname(__file__), "../bench/notes.md"), encoding="utf-8") as notes:
        remarks = notes.read()
    print(f"""# Performance

Written by `scripts/bench`, which measures everything anew; what is said about the figures is in
`bench/notes.md`. Each subject and its peer were timed in turns within one run, and the best round of each
counts. Times depend on the machine, ratios hardly: {machine()}

## What has to be reached

A row with several comparisons shows the worst of them. A figure in bold misses.

{table(head, rows)}

{remarks}
## The comparisons behind the rows

Times of the subject in times of its peer.

{detail_table(results)}

## Processors with 16-byte vectors alone

The width of 32,766 characters, in times of the plain read, by the code that such processors run.

{table(["what", *PLACES.values()], narrow_rows)}

## Short texts

Natively; where two times stand, the first is the same operation with the scalar twin in place of each vector function,
compiled with the same options.

{short_table(results["native"][1])}

## Growth

Natively. 32 in the last column is linear; texts that leave the nearest cache on their way cost more, those with a fixed
part cost less. GetPath looks for each field from the beginning, by definition.

{growth_table(results["native"][1]["growth"])}""")


main()
