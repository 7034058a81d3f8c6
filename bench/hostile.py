#!/usr/bin/env python3
"""Connections that mean harm, and a visitor who means none.

  hostile.py attack PORT COUNT SECONDS PAGE FILE   from 127.0.0.2: holds COUNT connections, opened anew when they end
  hostile.py visit PORT SECONDS TARGET...          from 127.0.0.3: asks one after the other, each on a connection of
                                                   its own, and prints what came and how long it took
  hostile.py forms PORT COUNT                      from 127.0.0.4: COUNT forms of 2 MB of nothing but fields, at once
  hostile.py bodies PORT COUNT FILE                from 127.0.0.5: COUNT requests for a file, with 2 MB each
"""

import random
import select
import socket
import sys
import time

HOST = "127.0.0.1"
AGAIN_AFTER = 1.0  # seconds until a connection that was ended or turned away is opened anew


def connect(port, source, blocking=True):
    sock = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
    sock.setsockopt(socket.IPPROTO_IP, 24, 1)  # the port is chosen when connecting: many share one address
    sock.bind((source, 0))
    sock.setblocking(blocking)
    if blocking:
        sock.settimeout(20)
    sock.connect_ex((HOST, port)) if not blocking else sock.connect((HOST, port))
    return sock


def get(target):
    return f"GET {target} HTTP/1.1\r\nHost: {HOST}\r\n\r\n".encode()


class Attacker:
    """One connection: says its first words, then drips, reads slowly, or asks again and again."""

    def __init__(self, kind, first, drip, reads):
        self.kind, self.first, self.drip, self.reads = kind, first, drip, reads
        self.sock = None
        self.due = 0.0
        self.said_first = False


def attack(port, count, seconds, page, file):
    kinds = [
        ("silent", b"", b"", False),
        ("slow header", f"GET {page} HTTP/1.1\r\nHost: a\r\nX: ".encode(), b"x", False),
        ("slow body", b"POST /tvxlogin.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
                      b"Content-Length: 16000\r\n\r\n", b"x", False),
        ("slow reader", get(file), b"", False),
        ("asks without end", get(page), b"", True),
    ]
    ways = [Attacker(*kinds[i % len(kinds)]) for i in range(count)]
    poll = select.epoll()
    by_number = {}
    opened = ended = pages = 0
    end = time.monotonic() + seconds

    def drop(way, now):
        nonlocal ended
        poll.unregister(way.sock.fileno())
        del by_number[way.sock.fileno()]
        way.sock.close()
        way.sock = None
        way.due = now + AGAIN_AFTER * random.uniform(0.5, 1.5)
        ended += 1

    while (now := time.monotonic()) < end:
        budget = 500  # of work in one go, so that answers are read meanwhile
        for way in ways:
            if way.due > now or budget == 0:
                continue
            budget -= 1
            if way.sock is None:
                way.sock = connect(port, "127.0.0.2", blocking=False)
                way.said_first = False
                by_number[way.sock.fileno()] = way
                poll.register(way.sock.fileno(), select.EPOLLOUT | select.EPOLLIN | select.EPOLLRDHUP)
                opened += 1
            elif way.said_first and way.drip:
                try:
                    way.sock.send(way.drip)
                except OSError:
                    drop(way, now)
                    continue
            way.due = now + 1.0
        for number, event in poll.poll(0.02, 1000):
            way = by_number.get(number)
            if way is None:
                continue
            try:
                if event & select.EPOLLOUT and not way.said_first:
                    if way.first:
                        way.sock.send(way.first)
                    way.said_first = True
                    watched = select.EPOLLRDHUP if way.kind == "slow reader" else select.EPOLLIN | select.EPOLLRDHUP
                    poll.modify(number, watched)
                if event & select.EPOLLIN and way.kind != "slow reader":
                    got = way.sock.recv(262144)
                    if not got:
                        drop(way, now)
                    elif way.reads and b"</html>" in got[-32:]:
                        pages += 1
                        way.sock.send(way.first)
                elif event & (select.EPOLLRDHUP | select.EPOLLHUP | select.EPOLLERR):
                    drop(way, now)
            except OSError:
                drop(way, now)
    held = sum(1 for way in ways if way.sock is not None)
    print(f"attack: {count} connections, {opened} opened, {ended} ended by the server, {held} open at the end, "
          f"{pages} pages taken")


def ask(port, source, request):
    sock = connect(port, source)
    try:
        sock.sendall(request)
        got = b""
        while b"\r\n\r\n" not in got:
            piece = sock.recv(65536)
            if not piece:
                return 0
            got += piece
        head, body = got.split(b"\r\n\r\n", 1)
        length = next(int(line.split(b":")[1]) for line in head.split(b"\r\n") if line.lower().startswith(b"content-length"))
        while len(body) < length:
            piece = sock.recv(65536)
            if not piece:
                return 0
            body += piece
        return int(head.split()[1])
    finally:
        sock.close()


def visit(port, seconds, targets):
    times, bad = [], []
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        target = targets[len(times) % len(targets)]
        begin = time.monotonic()
        try:
            status = ask(port, "127.0.0.3", get(target))
        except OSError as error:
            status = str(error)
        times.append(time.monotonic() - begin)
        if status != 200:
            bad.append(f"{target}: {status}")
        time.sleep(0.01)
    times.sort()
    at = lambda share: times[min(int(len(times) * share), len(times) - 1)] * 1000
    print(f"visits: {len(times)}, not answered: {len(bad)}, p50 {at(.5):.1f} ms, p99 {at(.99):.1f} ms, "
          f"worst {times[-1] * 1000:.1f} ms")
    for line in bad[:5]:
        print("  ", line)


def send_all(port, count, source, head, body):
    """Sends to all at once and reads what comes; counts the answers by status."""
    socks = [connect(port, source) for _ in range(count)]
    for sock in socks:
        sock.sendall(head)
    alive = {sock.fileno(): [sock, 0] for sock in socks}
    for sock in socks:
        sock.setblocking(False)
    end = time.monotonic() + 20
    statuses = {}
    while alive and time.monotonic() < end:
        readable, writable, _ = select.select([entry[0] for entry in alive.values()],
                                              [entry[0] for entry in alive.values() if entry[1] < len(body)], [], 1)
        for sock in writable:
            entry = alive[sock.fileno()]
            try:
                entry[1] += sock.send(body[entry[1]:entry[1] + 65536])
            except OSError:
                entry[1] = len(body)
        for sock in readable:
            try:
                got = sock.recv(65536)
            except OSError:
                got = b""
            status = got[9:12].decode() if got else "closed"
            statuses[status] = statuses.get(status, 0) + 1
            del alive[sock.fileno()]
            sock.close()
    print(f"{count} sent, answers: {statuses}, without one: {len(alive)}")


def main():
    what, port = sys.argv[1], int(sys.argv[2])
    if what == "attack":
        attack(port, int(sys.argv[3]), float(sys.argv[4]), sys.argv[5], sys.argv[6])
    elif what == "visit":
        visit(port, float(sys.argv[3]), sys.argv[4:])
    elif what == "forms":
        body = b"a&" * (1024 * 1024)
        head = (b"POST /tvxlogin.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
                b"Content-Length: %d\r\n\r\n" % len(body))
        send_all(port, int(sys.argv[3]), "127.0.0.4", head, body)
    elif what == "bodies":
        body = b"x" * (2 * 1024 * 1024 - 1)
        head = b"GET %s HTTP/1.1\r\nHost: a\r\nContent-Length: %d\r\n\r\n" % (sys.argv[4].encode(), len(body) + 1)
        send_all(port, int(sys.argv[3]), "127.0.0.5", head, body)


main()
