"""Puts together what the package holds, and writes the zip.

usage: stage.py CHECKOUT CONTENTS STAGE ZIP

Copies what the list CONTENTS names from CHECKOUT into the new folder STAGE, adds SHA256SUMS, and packs STAGE into ZIP,
below a folder of STAGE's name. Fails where something on the list is missing. Every file gets the time SOURCE_DATE_EPOCH,
and the zip depends on names, contents and that time alone.
"""

import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import time
import zipfile


def entries(contents):
    """The pairs of destination and source on the list."""
    for line in contents.read_text(encoding="utf-8").splitlines():
        if line.strip() and not line.startswith("#"):
            destination, source = line.split()
            yield destination, source


def tracked_files(checkout, folder):
    """The files under version control below a folder, relative to it."""
    listed = subprocess.run(["git", "-C", checkout / folder, "ls-files", "-z"], check=True, capture_output=True)
    return sorted(name for name in listed.stdout.decode().split("\0") if name)


def files(checkout, contents):
    """Where each file stands in the package, and where it comes from."""
    for destination, source in entries(contents):
        if not source.endswith("/"):
            yield destination, checkout / source
            continue
        names = tracked_files(checkout, source) if (checkout / source).is_dir() else []
        if not names:
            sys.exit(f"{contents.name}: there is nothing in {source}")
        for name in names:
            yield destination + name, checkout / source / name


def stage_files(checkout, contents, stage):
    """Fills the stage; gives the names of the files in it, in order."""
    names = []
    for name, source in files(checkout, contents):
        if not source.is_file():
            sys.exit(f"{contents.name}: there is no {source.relative_to(checkout)}")
        target = stage / name
        if target.exists():
            sys.exit(f"{contents.name}: {name} is there twice")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(source, target)
        names.append(name)
    return sorted(names)


def write_sums(stage, names):
    """One line for each file, as sha256sum writes and checks them."""
    lines = [f"{hashlib.sha256((stage / name).read_bytes()).hexdigest()}  {name}\n" for name in names]
    (stage / "SHA256SUMS").write_text("".join(lines), encoding="utf-8", newline="\n")


def write_zip(stage, names, target, when):
    """Packs the files in the order of their names."""
    with zipfile.ZipFile(target, "w") as archive:
        for name in names:
            entry = zipfile.ZipInfo(f"{stage.name}/{name}", time.gmtime(when)[:6])
            entry.external_attr = 0o100644 << 16
            entry.create_system = 3  # whose attributes these are
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, (stage / name).read_bytes(), compresslevel=9)


def main():
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    checkout, contents, stage, target = (pathlib.Path(argument) for argument in sys.argv[1:])
    when = int(os.environ["SOURCE_DATE_EPOCH"])
    shutil.rmtree(stage, ignore_errors=True)
    names = stage_files(checkout, contents, stage)
    write_sums(stage, names)
    names = sorted([*names, "SHA256SUMS"])
    for name in names:
        os.utime(stage / name, (when, when))
    write_zip(stage, names, target, when)


if __name__ == "__main__":
    main()
