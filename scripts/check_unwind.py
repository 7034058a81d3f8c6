#!/usr/bin/env python3
"""Looks up every function of a program as the C++ runtime does when an exception passes: by binary search in
.eh_frame_hdr. Prints those that are not found there, through which an exception would end the program.

The compiler writes entries of no length for the cold parts of functions that came out empty. They begin where another
function begins, and a linker that keeps one entry for each address may keep the empty one."""

import bisect
import sys
from collections import namedtuple

import elf

Entry = namedtuple("Entry", "begin end")

# How a pointer is written (DW_EH_PE_*).
FORMATS = {0x00: "Q", 0x02: "H", 0x03: "I", 0x04: "Q", 0x0A: "h", 0x0B: "i", 0x0C: "q"}
PC_RELATIVE, DATA_RELATIVE, INDIRECT = 0x10, 0x30, 0x80


class Broken(ValueError):
    pass


class Reader:
    """Reads along one section."""

    def __init__(self, program, section):
        self.program, self.section, self.at = program, section, section.offset

    @property
    def address(self):
        return self.section.address + self.at - self.section.offset

    def take(self, form):
        value, = self.program.unpack("<" + form, self.at)
        self.at += {"B": 1, "H": 2, "h": 2, "I": 4, "i": 4, "Q": 8, "q": 8}[form]
        return value

    def leb128(self):
        value = shift = 0
        while True:
            byte = self.take("B")
            value |= (byte & 0x7F) << shift
            shift += 7
            if byte < 0x80:
                return value

    def pointer(self, encoding):
        base = {0: 0, PC_RELATIVE: self.address, DATA_RELATIVE: self.section.address}.get(encoding & 0x70)
        if base is None or encoding & INDIRECT or encoding & 0x0F not in FORMATS:
            raise Broken(f"a pointer is written as {encoding:#x}, which this check doesn't know")
        return base + self.take(FORMATS[encoding & 0x0F])


def pointer_encoding(program, section, offset):
    """How the functions' entries of a common entry (CIE) write their addresses."""
    reader = Reader(program, section)
    reader.at = offset
    reader.take("I"), reader.take("I")
    version = reader.take("B")
    augmentation = program.text(reader.at)
    reader.at += len(augmentation) + 1
    reader.leb128(), reader.leb128()
    reader.take("B") if version == 1 else reader.leb128()
    if not augmentation.startswith("z"):
        return 0
    reader.leb128()
    for letter in augmentation[1:]:
        if letter == "R":
            return reader.take("B")
        if letter == "L":
            reader.take("B")
        elif letter == "P":
            encoding = reader.take("B")
            reader.pointer(encoding & 0x0F)
    return 0


def frame_entries(program):
    """All entries of functions in .eh_frame, by their addresses."""
    section = program.section(".eh_frame")
    if section is None:
        raise Broken("there is no .eh_frame")
    reader, entries, encodings = Reader(program, section), {}, {}
    while reader.at < section.offset + section.size:
        address = reader.address
        length = reader.take("I")
        if length == 0:
            continue
        following, id_at = reader.at + length, reader.at
        back = reader.take("I")
        if back != 0:
            common = id_at - back
            if common not in encodings:
                encodings[common] = pointer_encoding(program, section, common)
            begin = reader.pointer(encodings[common])
            entries[address] = Entry(begin, begin + reader.take(FORMATS[encodings[common] & 0x0F]))
        reader.at = following
    return entries


def search_table(program):
    """The pairs of .eh_frame_hdr: where a function begins, and the address of its entry."""
    section = program.section(".eh_frame_hdr")
    if section is None:
        raise Broken("there is no .eh_frame_hdr")
    reader = Reader(program, section)
    _, frame_encoding, count_encoding, encoding = (reader.take("B") for _ in range(4))
    reader.pointer(frame_encoding)
    count = reader.pointer(count_encoding)
    return [(reader.pointer(encoding), reader.pointer(encoding)) for _ in range(count)]


def lost_functions(program):
    entries, table = frame_entries(program), search_table(program)
    begins = [begin for begin, _ in table]
    if begins != sorted(begins):
        raise Broken(".eh_frame_hdr is not in order")

    def is_found(address):
        place = bisect.bisect_right(begins, address) - 1
        entry = entries.get(table[place][1]) if place >= 0 else None
        return entry is not None and entry.begin <= address < entry.end

    functions = [entry for entry in entries.values() if entry.begin < entry.end]
    if not functions:
        raise Broken("no function has an entry")
    return sorted({entry for entry in functions if not (is_found(entry.begin) and is_found(entry.end - 1))})


def main(paths):
    findings = 0
    for path in paths:
        try:
            program = elf.Elf(path)
            names = {symbol.address: symbol.name for symbol in program.symbols(elf.SHT_SYMTAB)
                     if symbol.type == elf.STT_FUNC and symbol.size > 0}
            for entry in lost_functions(program):
                print(f"{path}: no exception can pass {names.get(entry.begin, 'a function')} at {entry.begin:#x}")
                findings += 1
        except (OSError, ValueError) as error:
            print(f"{path}: {error}")
            findings += 1
    return 1 if findings else 0


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(f"usage: {sys.argv[0]} PROGRAM...")
    sys.exit(main(sys.argv[1:]))
