#!/usr/bin/env python3
"""Tells what a program lacks of what a release is built with: any address (PIE), tables that are read-only once it runs
(full RELRO), a stack without code, checked stacks, checked calls of the C library and checked containers of C++'s."""

import sys

import elf

DT_NULL, DT_BIND_NOW, DT_FLAGS, DT_FLAGS_1 = 0, 24, 30, 0x6FFFFFFB
DF_BIND_NOW, DF_1_NOW = 0x8, 0x1


def binds_at_start(program):
    entries = dict(program.dynamic())
    return bool(DT_BIND_NOW in entries or entries.get(DT_FLAGS, 0) & DF_BIND_NOW
                or entries.get(DT_FLAGS_1, 0) & DF_1_NOW)


def lacks(program):
    segments = {segment.type: segment.flags for segment in program.segments}
    called = {symbol.name for symbol in program.symbols(elf.SHT_DYNSYM) if not symbol.is_defined}
    if program.type != elf.ET_DYN or elf.PT_INTERP not in segments:
        yield "a position of its own choice at each start (PIE)"
    if elf.PT_GNU_RELRO not in segments or not binds_at_start(program):
        yield "tables that are read-only once it runs (full RELRO)"
    if segments.get(elf.PT_GNU_STACK, elf.FLAG_EXECUTABLE) & elf.FLAG_EXECUTABLE:
        yield "a stack that holds no code"
    if "__stack_chk_fail" not in called:
        yield "stack protectors"
    if not any(name.startswith("__") and name.endswith("_chk") for name in called):
        yield "checked calls of the C library (FORTIFY)"
    if not any("__glibcxx_assert_fail" in name for name in called):
        yield "checked containers of the C++ library (_GLIBCXX_ASSERTIONS)"


def main(paths):
    findings = 0
    for path in paths:
        try:
            for lack in lacks(elf.Elf(path)):
                print(f"{path}: lacks {lack}")
                findings += 1
        except (OSError, ValueError) as error:
            print(f"{path}: {error}")
            findings += 1
    return 1 if findings else 0


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(f"usage: {sys.argv[0]} PROGRAM...")
    sys.exit(main(sys.argv[1:]))
