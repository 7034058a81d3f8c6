#!/bin/bash
# What it costs to send a large document to many readers at once: processor time for each, and memory.
#
#   bench/documents.sh [READERS] [MEGABYTES]        (default 200 of 256 MB)
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh
readers=${1:-200}
megabytes=${2:-256}
need curl python3
build_torvex
init_demo
code=$(first_site)
document=/documents/$code/large.zip
mkdir -p "$folder/site/wwwroot/documents/$code"
head -c "${megabytes}M" /dev/urandom >"$folder/site/wwwroot$document"
serve_demo
curl -sf -o /dev/null "$site$document"

before=$(ticks "$server")
peak=$(memory VmHWM)
# The readers let the kernel throw the bytes away, so that the machine is left to the server.
python3 - "$port" "$document" "$readers" "$((megabytes * 1024 * 1024))" <<'PYTHON'
import selectors, socket, sys

port, document, readers, size = int(sys.argv[1]), sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
selector = selectors.DefaultSelector()
left = {}
for _ in range(readers):
    connection = socket.create_connection(("127.0.0.1", port))
    connection.sendall(f"GET {document} HTTP/1.1\r\nHost: localhost\r\n\r\n".encode())
    selector.register(connection, selectors.EVENT_READ)
while selector.get_map():
    for key, _ in selector.select():
        connection = key.fileobj
        if connection not in left:
            start = b""
            while b"\r\n\r\n" not in start:
                start += connection.recv(4096)
            head, body = start.split(b"\r\n\r\n", 1)
            assert head.startswith(b"HTTP/1.1 200"), head
            left[connection] = size - len(body)
        got = connection.recv(1 << 20, socket.MSG_TRUNC)
        count = got if isinstance(got, int) else len(got)
        left[connection] -= count
        if left[connection] <= 0 or count == 0:
            assert left[connection] == 0, left[connection]
            selector.unregister(connection)
            connection.close()
PYTHON
each=$(awk -v used="$(($(ticks "$server") - before))" -v hz="$(getconf CLK_TCK)" -v n="$readers" \
    'BEGIN {printf "%.1f", used * 1000 / hz / n}')
echo "$readers readers of $megabytes MB at once: $each ms of processor time each"
echo "memory: $peak kB before, $(memory VmHWM) kB at most"
