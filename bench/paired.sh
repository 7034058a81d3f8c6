#!/bin/bash
# Compares programs on the demo's home page: processor time per request, in microseconds, by turns in one run on this
# machine, so that what else it does meets all of them.
#
#   bench/paired.sh ROUNDS SECONDS PROGRAM...
#
# All serve the demo of the first one, an older program than the others, so that they make the same page. Shows the
# figures of each program in order, and their median. Everything runs on 127.0.0.1 and in a temporary folder.
# Needs wrk (Debian's package).
set -euo pipefail
# shellcheck source=bench/common.sh
. "$(dirname "$0")/common.sh"

if [ $# -lt 3 ]; then
    echo "usage: $0 ROUNDS SECONDS PROGRAM..." >&2
    exit 2
fi
rounds=$1
seconds=$2
shift 2
programs=("$@")

need wrk curl
servers=()
torvex=${programs[0]}
init_demo
for i in "${!programs[@]}"; do
    cp -r "$folder/site" "$folder/site$i"
    "${programs[i]}" migrate --install "$folder/site$i" >/dev/null
    serve "${programs[i]}" "$folder/site$i" "$((port + i))" "$folder/log$i"
    servers+=("$server")
done

for _ in $(seq "$rounds"); do
    for i in "${!programs[@]}"; do
        before=$(ticks "${servers[i]}")
        wrk -t1 -c8 -d"${seconds}s" "http://127.0.0.1:$((port + i))/tvx.asp?pageId=1" >"$folder/wrk.txt"
        after=$(ticks "${servers[i]}")
        awk -v used=$((after - before)) -v hz="$(getconf CLK_TCK)" '
            / requests in / {printf "%.1f\n", used / hz * 1e6 / $1}' "$folder/wrk.txt" >>"$folder/figures$i"
    done
done

for i in "${!programs[@]}"; do
    sort -n "$folder/figures$i" >"$folder/sorted"
    echo "${programs[i]}: $(paste -s -d' ' "$folder/sorted"), median $(sed -n "$(((rounds + 1) / 2))p" "$folder/sorted")"
done
