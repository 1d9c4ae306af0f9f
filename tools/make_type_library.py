#!/usr/bin/env python3
"""make_type_library.py WIDL 32|64 IDL_FOLDER STUB_FOLDER FOLDER

Writes the type libraries of one bitness from the IDL texts of IDL_FOLDER, by the IDL compiler WIDL, into FOLDER:
Corvelle.tlb, Corvelle_self_contained.tlb, and data_access_stub.tlb, which stands in for the host's data access library.
STUB_FOLDER has what the compiler wants of the libraries and texts that ours refer to. A default text has its bytes in code
page 936, whatever the machine.
"""
import pathlib
import re
import struct
import subprocess
import sys

HEADER_SIZE = 84
TYPE_COUNT = 32  # where the header has it
SEGMENT_TYPES, SEGMENT_GUIDS, SEGMENT_NAMES, SEGMENT_TYPE_DESCRIPTORS, SEGMENT_CUSTOM_DATA, SEGMENT_CUSTOM_GUIDS = (
    0, 5, 7, 9, 11, 12)
TYPE_SIZE, TYPE_MEMBERS, TYPE_MEMBER_COUNT = 100, 4, 24

TEXT = 0x80080008
REFERRED_TEXT = (0x4008001A, TEXT)  # a descriptor: a pointer to a text
IN, OUT = 1, 2
HAS_DEFAULTS = 0x1000  # of a function's record
PARAMETER_SIZE = 12
NO_DEFAULT = 0xFFFFFFFF
POINTER_COST = 8  # by which a record grows in the reader's memory for a pointer in it

TIME_OF_WRITING = bytes.fromhex("63BA77DE7C51D111A2DA0000F8773CE9")
KNOWN_TIME = b" at Thu Jan  1 00:00:00 1970"


class Library:
    """A type library's file, whose words can be read and set."""

    def __init__(self, path):
        self.path = path
        self.data = bytearray(path.read_bytes())
        self.type_count = self.word(TYPE_COUNT)
        self.directory = HEADER_SIZE + 4 * self.type_count

    def word(self, place):
        return struct.unpack_from("<I", self.data, place)[0]

    def set_word(self, place, value):
        struct.pack_into("<I", self.data, place, value)

    def segment(self, number):
        """Where a segment begins, and where it ends."""
        start, length = struct.unpack_from("<II", self.data, self.directory + 16 * number)
        return start, start + length

    def records(self, number, size):
        """The places of a segment's records."""
        return range(*self.segment(number), size)

    def name(self, offset):
        place = self.segment(SEGMENT_NAMES)[0] + offset
        return bytes(self.data[place + 12:place + 12 + (self.word(place + 8) & 0xFF)]).decode("ascii")

    def functions(self):
        """The places of all functions' records."""
        for place in self.records(SEGMENT_TYPES, TYPE_SIZE):
            record = self.word(place + TYPE_MEMBERS) + 4
            for _ in range(self.word(place + TYPE_MEMBER_COUNT) & 0xFFFF):
                yield record
                record += self.word(record) & 0xFFFF

    def refer_to_texts(self):
        """Makes each text with a default, which the compiler takes by value alone, one by reference, in and out. Gives the
        parameters' names."""
        descriptors = self.records(SEGMENT_TYPE_DESCRIPTORS, 8)
        referred = next(place - descriptors.start for place in descriptors
                        if (self.word(place), self.word(place + 4)) == REFERRED_TEXT)
        found = []
        for function in self.functions():
            if not self.word(function + 16) & HAS_DEFAULTS:
                continue
            count = self.word(function + 20) & 0xFFFF
            parameters = function + (self.word(function) & 0xFFFF) - PARAMETER_SIZE * count
            defaults = parameters - 4 * count
            for index in range(count):
                parameter = parameters + PARAMETER_SIZE * index
                default = self.word(defaults + 4 * index)
                if self.word(parameter) != TEXT or default == NO_DEFAULT:
                    continue
                self.set_word(parameter, referred)
                self.set_word(parameter + 8, self.word(parameter + 8) | IN | OUT)
                self.set_word(function + 12, self.word(function + 12) + (POINTER_COST << 16))
                found.append(self.name(self.word(parameter + 4)))
        return found

    def forget_the_compiler(self):
        """Puts constants where the compiler wrote its version, and when it ran: in words, and the time also as a number."""
        custom = self.segment(SEGMENT_CUSTOM_DATA)
        text, count = re.subn(rb"version ([\d.]+) at \w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}",
                              lambda found: b"version " + re.sub(rb"\d", b"0", found[1]) + KNOWN_TIME,
                              self.data[slice(*custom)])
        self.data[slice(*custom)] = text
        guids = self.segment(SEGMENT_GUIDS)[0]
        numbers = [custom[0] + self.word(place + 4) + 2 for place in self.records(SEGMENT_CUSTOM_GUIDS, 12)
                   if self.data[guids + self.word(place):][:16] == TIME_OF_WRITING]
        assert count == len(numbers) == 1, f"{self.path}: the time of writing is somewhere else"
        self.set_word(numbers[0], 0)


def main(widl, bits, idl_folder, stub_folder, folder):
    """Compiles all, each with what was compiled before in its reach."""
    idl_folder, stub_folder, folder = map(pathlib.Path, (idl_folder, stub_folder, folder))

    def compile_idl(text, output):
        done = subprocess.run([widl, "-t", f"--win{bits}", "-I", stub_folder, "-L", idl_folder, "-o", output, text],
                              stderr=subprocess.PIPE, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"{text}: {done.stderr}")
        return Library(output)

    compile_idl(stub_folder / "stdole2.idl", idl_folder / "stdole2.tlb")
    stub = compile_idl(stub_folder / "dao350.idl", idl_folder / "dao350.dll")
    stub.forget_the_compiler()
    (folder / "data_access_stub.tlb").write_bytes(stub.data)
    for name in ("Corvelle", "Corvelle_self_contained"):
        encoded = idl_folder / f"{name}.936.idl"
        encoded.write_text((idl_folder / f"{name}.idl").read_text(encoding="utf-8"), encoding="cp936")
        library = compile_idl(encoded, idl_folder / f"{name}.tlb")
        found = library.refer_to_texts()
        assert found == ["strFmt"], f"texts by reference with a default: {found}"
        library.forget_the_compiler()
        (folder / f"{name}.tlb").write_bytes(library.data)


if __name__ == "__main__":
    if len(sys.argv) != 6:
        sys.exit(f"usage: {__doc__}")
    main(*sys.argv[1:])
