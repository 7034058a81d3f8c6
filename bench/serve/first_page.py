#!/usr/bin/env python3
"""first_page.py PORT TARGET PROGRAM ARGUMENT...: starts the program, asks for TARGET until it is answered whole and with 200, ends the
program, and prints the milliseconds from its start to the end of that answer."""

import http.client
import subprocess
import sys
import time


def first_answer(port, target, end):
    while time.monotonic() < end:
        try:
            connection = http.client.HTTPConnection("127.0.0.1", port, timeout=5)
            connection.request("GET", target)
            answer = connection.getresponse()
            if answer.read() and answer.status == 200:
                return
        except (ConnectionError, http.client.HTTPException):
            pass
        time.sleep(0.001)
    sys.exit("there was no answer in time")


def main():
    port, target, command = int(sys.argv[1]), sys.argv[2], sys.argv[3:]
    begin = time.monotonic()
    program = subprocess.Popen(command, stderr=subprocess.DEVNULL)
    try:
        first_answer(port, target, begin + 30)
        print(f"{(time.monotonic() - begin) * 1000:.0f}")
    finally:
        program.terminate()
        program.wait()


main()
