#!/usr/bin/env python3
"""hold.py PORT COUNT TARGET: opens COUNT connections, asks for TARGET on each, and keeps them open. Says "ready" then; once its
standard input ends, it says how many of them the server has ended meanwhile."""

import socket
import sys


def ask(sock, request):
    sock.sendall(request)
    answer = b""
    while b"\r\n\r\n" not in answer:
        answer += sock.recv(65536)
    header, body = answer.split(b"\r\n\r\n", 1)
    assert header.startswith(b"HTTP/1.1 200 "), header
    missing = int(header.lower().split(b"content-length:")[1].split(b"\r\n")[0]) - len(body)
    while missing > 0:
        missing -= len(sock.recv(65536))


def is_open(sock):
    sock.setblocking(False)
    try:
        return sock.recv(1) != b""
    except BlockingIOError:
        return True
    except OSError:
        return False


def main():
    port, count, target = int(sys.argv[1]), int(sys.argv[2]), sys.argv[3]
    request = f"GET {target} HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\n\r\n".encode()
    held = []
    for _ in range(count):
        held.append(socket.create_connection(("127.0.0.1", port)))
        ask(held[-1], request)
    print("ready", flush=True)
    sys.stdin.read()
    print(sum(not is_open(sock) for sock in held), flush=True)


main()
