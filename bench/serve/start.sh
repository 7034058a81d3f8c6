#!/bin/bash
# The part "start" of bench/serve.sh: the time from the start of the program to the end of its first page, and the memory that it
# takes after ten pages.
. bench/serve/common.sh
need python3

init_demo
serve_demo
page=$(home_page)
kill "$server"
wait "$server" 2>/dev/null || true
for _ in 1 2 3 4 5; do
    python3 bench/serve/first_page.py "$port" "$page" "$torvex" serve --install "$folder/site" --listen "127.0.0.1:$port"
done | sort -n >"$folder/starts"
echo "first page: $(sed -n 3p "$folder/starts") ms after the start (goal 300; from $(head -n 1 "$folder/starts") to $(tail -n 1 "$folder/starts"))"

serve_demo
mapfile -t pages < <("$torvex" sql --install "$folder/site" --json "select pageId from TORVEX_PAGES_LIVE
    where type = 'P' and online = 1 and nodeId like 'bg.en%' order by pageId limit 10" | tr -dc '0-9\n')
at_start=$(memory VmRSS)
for id in "${pages[@]}"; do curl -sf -o /dev/null -w '%{http_code}\n' "$site/tvx.asp?pageId=$id"; done | sort | uniq -c >"$folder/answers"
sleep 1
in_mb() { awk -v kB="$1" 'BEGIN {printf "%.1f MB", kB / 1024}'; }
echo "memory: $(in_mb "$(memory VmRSS)") resident, $(in_mb "$(awk '/^Pss:/ {print $2}' "/proc/$server/smaps_rollup")") its share (goal 40)" \
    "after ten pages (answers: $(tr -s ' \n' ' ' <"$folder/answers")); $(in_mb "$at_start") at the start"
