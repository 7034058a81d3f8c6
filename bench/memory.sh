#!/bin/bash
# How much memory the server takes after many requests by visitors without cookies.
#
#   bench/memory.sh [REQUESTS]        (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh
wanted=${1:-1000000}
need wrk curl
build_torvex
init_demo
serve_demo

echo "at the start: $(memory VmRSS) kB"
sent=0
while [ "$sent" -lt "$wanted" ]; do
    count=$(wrk -t1 -c32 -d10s "$site/tvx.asp?pageId=1" | awk '/ requests in / {print $1}')
    sent=$((sent + count))
    echo "after $sent requests: $(memory VmRSS) kB"
done
