#!/bin/bash
# How much memory the server takes after many requests by visitors without cookies.
#
#   bench/memory.sh [REQUESTS]        (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
wanted=${1:-1000000}
command -v wrk >/dev/null || ${SUDO:-$([ "$(id -u)" -eq 0 ] || echo sudo)} apt-get install -y --no-install-recommends wrk >/dev/null

[ -f build/release/build.ninja ] || cmake --preset release -DTORVEX_TESTS=OFF >/dev/null
cmake --build --preset release --target torvex >/dev/null
torvex=$PWD/build/release/torvex
folder=$(mktemp -d /tmp/torvex-bench-XXXXXX)
server=
finish() { [ -z "$server" ] || { kill "$server" 2>/dev/null && wait "$server" 2>/dev/null || true; }; rm -rf "$folder"; }
trap finish EXIT

port=$((20000 + RANDOM % 10000))
"$torvex" init "$folder/site" --demo >/dev/null
"$torvex" serve --install "$folder/site" --listen 127.0.0.1:$port 2>"$folder/torvex.log" &
server=$!
for _ in $(seq 100); do curl -s -o /dev/null "http://127.0.0.1:$port/error.asp" && break; sleep 0.05; done

resident() { awk '/VmRSS/ {print $2}' "/proc/$server/status"; }
echo "at the start: $(resident) kB"
sent=0
while [ "$sent" -lt "$wanted" ]; do
    count=$(wrk -t1 -c32 -d10s "http://127.0.0.1:$port/tvx.asp?pageId=1" | awk '/ requests in / {print $1}')
    sent=$((sent + count))
    echo "after $sent requests: $(resident) kB"
done
