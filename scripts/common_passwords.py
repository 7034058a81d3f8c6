#!/usr/bin/env python3
"""Makes install/passwords/common.txt of a list of passwords in the order of how common they are, one a line:

    python3 scripts/common_passwords.py LIST > install/passwords/common.txt

Run by hand when the list is to be another one; install/passwords/README.md tells where the present one is from.

Passwords here ignore case and the blanks around them, so the first 100,000 that differ in that form are taken. They are
written in small letters and in order, in blocks of 512 bytes, each filled up with line ends. A line is a capital, which
tells how many letters it has in common with the line above (A for none, B for one, ...), and the letters that follow; the
first line of a block has none in common. So the program looks a password up in the file as it is, by halving."""

import sys

COUNT = 100_000
BLOCK = 512
MOST_IN_COMMON = 25


def commonest(lines):
    """The others' letters have rules of case that only the program knows; of a hundred thousand that is one."""
    found = {}
    for line in lines:
        password = line.rstrip(b"\r\n").strip(b" ").lower()
        if password and all(32 <= byte < 127 for byte in password):
            found.setdefault(password)
        if len(found) == COUNT:
            return list(found)
    sys.exit(f"there are only {len(found)} different passwords in the list")


def in_common(one, other):
    count = 0
    while count < min(len(one), len(other), MOST_IN_COMMON) and one[count] == other[count]:
        count += 1
    return count


def line_of(password, shared):
    return bytes([ord("A") + shared]) + password[shared:] + b"\n"


def blocks(passwords):
    block, last = b"", b""
    for password in passwords:
        line = line_of(password, in_common(last, password))
        if not block or len(block) + len(line) > BLOCK:
            if block:
                yield block.ljust(BLOCK, b"\n")
            block = b""
            line = line_of(password, 0)
        block += line
        last = password
    yield block.ljust(BLOCK, b"\n")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], "rb") as lines:
        passwords = commonest(lines)
    for block in blocks(sorted(passwords)):
        sys.stdout.buffer.write(block)


if __name__ == "__main__":
    main()
