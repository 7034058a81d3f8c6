#!/bin/bash
# Measures what one visitor gets while another address means harm, on this machine and 127.0.0.x alone: 4096
# connections from one address that say nothing, send headers and bodies byte by byte, don't read what they asked
# for, or ask for pages without end, each opened anew when the server ends it. Then the memory that forms of a
# million fields and bodies for files cost.
#
#   bench/hostile.sh [--seconds N] [--connections N] [--program FILE]     (default 30, 4096, the release build)
#
# The attack's own processor time comes from the same cores as the server's.
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh

seconds=30
connections=4096
torvex=
while [ $# -gt 0 ]; do
    case "$1" in
        --seconds) seconds=$2; shift 2 ;;
        --connections) connections=$2; shift 2 ;;
        --program) torvex=$2; shift 2 ;;
        *) echo "usage: $0 [--seconds N] [--connections N] [--program FILE]" >&2; exit 2 ;;
    esac
done
ulimit -n "$(ulimit -Hn)"
need curl python3
build_torvex
init_demo
head -c 50000000 /dev/zero >"$folder/site/wwwroot/big.zip"
serve_demo
page=$(home_page)
static=/stylesheets/shared/core.css

megabytes() { awk -v kB="$(memory "$1")" 'BEGIN {printf "%.0f MB", kB / 1024}'; }

echo "calm"
python3 bench/hostile.py visit "$port" 5 "$page" "$static"
echo "under attack ($(nproc) cores for the server, the attack and the visitor)"
python3 bench/hostile.py attack "$port" "$connections" "$((seconds + 5))" "$page" /big.zip &
attack=$!
processes+=("$attack")
sleep 4
python3 bench/hostile.py visit "$port" "$seconds" "$page" "$static"
wait $attack
echo "resident: $(megabytes VmRSS)"

before=$(megabytes VmRSS)
echo 5 >"/proc/$server/clear_refs" 2>/dev/null || true
echo "16 forms of a million fields"
python3 bench/hostile.py forms "$port" 16
echo "resident: $before before, $(megabytes VmHWM) at most"
echo "200 requests for a file, with 2 MB each"
python3 bench/hostile.py bodies "$port" 200 "$static"
echo "resident: $(megabytes VmHWM) at most"
echo "lines in the log: $(wc -l <"$folder/torvex.log")"
