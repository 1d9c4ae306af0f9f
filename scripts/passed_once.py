"""Runs a check on each of many files, but not again on a file that passed it before in the same state.

scripts/passed_once.py --cache FOLDER [--side native|windows] [--also TEXT]… [--together FOLDER] COMMAND… -- FILE…

COMMAND is run once per file, with {} standing for the file; it passes when it exits with 0. The state of a file is
its content, the content of every header of this checkout that it includes, directly or not, the command, and the
texts given by --also (a tool's version, its settings). What fails is shown, and the exit status is 1.
--side takes only the files that belong there: what includes a header of the Windows system belongs to Windows, the rest is native.
--together checks the sources of a folder as one: as files in FOLDER that include eight of them each. A tool that spends most
of its time on what they all include is done in a fraction of it.
"""

import argparse
import concurrent.futures
import functools
import hashlib
import itertools
import os
import pathlib
import re
import subprocess
import sys

# Corvelle.h is for Windows, too: the build writes it.
WINDOWS_HEADERS = {"Corvelle.h", "windows.h", "guiddef.h", "oaidl.h", "oleauto.h", "unknwn.h", "winnt.h", "wtypes.h"}
SOURCES_TOGETHER = 8
INCLUDE = re.compile(rb'^#include ["<]([^">]+)[">]', re.MULTILINE)


@functools.cache
def content(path):
    return pathlib.Path(path).read_bytes()


@functools.cache
def included(path):
    """What a file includes: the path of what stands beside it, as in the samples, or the name as it is written."""
    names = [name.decode() for name in INCLUDE.findall(content(path))]
    beside = [os.path.join(os.path.dirname(path), name) for name in names]
    return [near if os.path.isfile(near) else name for name, near in zip(names, beside)]


def closure(path):
    """The file and every header that it includes: those of the checkout opened, the system's only named."""
    found, waiting = {}, [path]
    while waiting:
        name = waiting.pop()
        if name not in found:
            found[name] = os.path.isfile(name)
            waiting += included(name) if found[name] else []
    return found


def state(path, settings):
    digest = hashlib.sha256(repr((path, settings)).encode())
    for name, ours in sorted(closure(path).items()):
        digest.update(repr((name, content(name) if ours else None)).encode())
    return digest.hexdigest()


def belongs(path, side):
    return side is None or bool(WINDOWS_HEADERS & closure(path).keys()) == (side == "windows")


def together(paths, folder):
    """Files that include these sources, in the same folders below `folder`; as they were where nothing changed."""
    for place, sources in itertools.groupby(sorted(paths), os.path.dirname):
        sources = list(sources)
        for start in range(0, len(sources), SOURCES_TOGETHER):
            path = pathlib.Path(folder, place, f"from_{start}.cpp")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text("".join(f'#include "{source}"  // NOLINT\n' for source in sources[start:start + SOURCES_TOGETHER]))
            yield str(path)


def passes(path, arguments):
    """Whether the check passes; its output is printed when not."""
    mark = pathlib.Path(arguments.cache, state(path, (arguments.command, arguments.also)))
    if not mark.exists():
        command = [path if word == "{}" else word for word in arguments.command]
        run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if run.returncode != 0:
            sys.stdout.buffer.write(run.stdout)
            return False
    mark.touch()  # also a sign of use: marks long unused are swept away
    return True


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--cache", required=True)
    parser.add_argument("--side", choices=["native", "windows"])
    parser.add_argument("--also", action="append", default=[])
    parser.add_argument("--together")
    parser.add_argument("command", nargs="+")
    separator = len(sys.argv) - sys.argv[::-1].index("--") - 1  # the last one: commands have their own
    arguments = parser.parse_args(sys.argv[1:separator])
    files = [path for path in sys.argv[separator + 1 :] if belongs(path, arguments.side)]
    if arguments.together:
        files = list(together(files, arguments.together))
    os.makedirs(arguments.cache, exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda path: passes(path, arguments), files))
    print(f"{len(results)} files, {results.count(False)} failed")
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
