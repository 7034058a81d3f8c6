#!/bin/bash
# What visitors of the home page notice while the server takes new documents into its search: the latencies with and
# without, in turn, by one connection that waits between its requests. The goal: the 99th percentile at most doubles.
#
#   bench/indexing.sh [DOCUMENTS] [SECONDS]        (default 20000 documents, 10 seconds of each)
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh
documents=${1:-20000}
seconds=${2:-10}
need curl python3
build_torvex
init_demo
code=$(first_site)
"$torvex" index --install "$folder/site" >/dev/null
serve_demo
page=$(home_page)

# latencies NAME: median and 99th percentile of the home page in ms, and how many requests those were.
latencies() {
    python3 - "$1" "$port" "$page" "$seconds" <<'PYTHON'
import http.client, sys, time

name, port, page, seconds = sys.argv[1], int(sys.argv[2]), sys.argv[3], float(sys.argv[4])
connection = http.client.HTTPConnection("127.0.0.1", port)
times = []
end = time.monotonic() + seconds
while time.monotonic() < end:
    begin = time.monotonic()
    connection.request("GET", page)
    answer = connection.getresponse()
    answer.read()
    assert answer.status == 200, answer.status
    times.append((time.monotonic() - begin) * 1000)
    time.sleep(0.005)
times.sort()
print(f"{name}: p50 {times[len(times) // 2]:.2f} ms, p99 {times[int(len(times) * 0.99)]:.2f} ms, {len(times)} requests")
PYTHON
}

latencies "at rest"
python3 - "$folder/site/wwwroot/documents/$code/many" "$documents" <<'PYTHON'
import os, random, sys

folder, count = sys.argv[1], int(sys.argv[2])
random.seed(1)
words = ["".join(random.choice("abcdefghijklmnoprstuvw") for _ in range(random.randint(3, 9))) for _ in range(20000)]
weights = [1 / (n + 1) for n in range(len(words))]
os.makedirs(folder)
for n in range(count):
    with open(f"{folder}/{n}.txt", "w") as file:
        file.write(" ".join(random.choices(words, weights, k=300)))
PYTHON
# It compares the files with its catalogue as it starts.
kill "$server"
wait "$server" 2>/dev/null || true
serve_demo
before=$(ticks "$server")
latencies "while it takes $documents documents in"
awk -v used="$(($(ticks "$server") - before))" -v hz="$(getconf CLK_TCK)" \
    'BEGIN {printf "the server used %.1f s of processor time meanwhile\n", used / hz}'
