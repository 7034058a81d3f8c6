"""Just enough of ELF to look into a program: its sections, segments, dynamic entries and symbols. 64 bits, little
endian, as all machines that Debian 12 builds the program for."""

import struct
from collections import namedtuple

Section = namedtuple("Section", "name type address offset size link entry_size")
Segment = namedtuple("Segment", "type flags")
Symbol = namedtuple("Symbol", "name type address size is_defined")

ET_DYN = 3
PT_INTERP, PT_GNU_STACK, PT_GNU_RELRO = 3, 0x6474E551, 0x6474E552
FLAG_EXECUTABLE = 1
SHT_SYMTAB, SHT_DYNAMIC, SHT_DYNSYM = 2, 6, 11
STT_FUNC = 2


class Elf:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.data = file.read()
        if self.data[:6] != b"\x7fELF\x02\x01":
            raise ValueError(f"{path}: no program for 64 bits, little endian")
        self.type, = self.unpack("<H", 16)
        self.segments = [Segment(*self.unpack("<II", at)) for at in self.table(32, 54)]
        self.sections = self.read_sections()

    def unpack(self, form, offset):
        return struct.unpack_from(form, self.data, offset)

    def table(self, offset_at, size_at):
        start, = self.unpack("<Q", offset_at)
        size, count = self.unpack("<HH", size_at)
        return [start + index * size for index in range(count)]

    def read_sections(self):
        raw = [self.unpack("<IIQQQQIIQQ", at) for at in self.table(40, 58)]
        names = raw[self.unpack("<H", 62)[0]][4]
        return [Section(self.text(names + name), kind, address, offset, size, link, entry_size)
                for name, kind, _, address, offset, size, link, _, _, entry_size in raw]

    def text(self, offset):
        return self.data[offset:self.data.index(b"\0", offset)].decode("utf-8", "replace")

    def section(self, name):
        return next((section for section in self.sections if section.name == name), None)

    def symbols(self, table_type):
        for table in (section for section in self.sections if section.type == table_type):
            names = self.sections[table.link].offset
            for at in range(table.offset, table.offset + table.size, table.entry_size):
                name, info, _, index, address, size = self.unpack("<IBBHQQ", at)
                yield Symbol(self.text(names + name), info & 15, address, size, index != 0)

    def dynamic(self):
        for table in (section for section in self.sections if section.type == SHT_DYNAMIC):
            for at in range(table.offset, table.offset + table.size, 16):
                yield self.unpack("<QQ", at)
