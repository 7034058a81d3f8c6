#!/bin/bash
# The part "growth" of bench/serve.sh: what the same page costs on the demo as it is and on the demo with 1,000, 10,000 and
# 100,000 pages more, kept and made anew. It is the home page, and the same bytes on all of them.
. bench/serve/common.sh

sizes=(0 1000 10000 100000)
declare -A ports keeping anew
init_demo
pages=$("$torvex" sql --install "$folder/site" --json "select count(*) as n from TORVEX_PAGES_LIVE" | tr -dc 0-9)
mv "$folder/site" "$folder/site0"

# grow PAGES: into "$folder/sitePAGES", below a page of the second level, where no menu of the home page shows them.
grow() {
    [ "$1" -gt 0 ] || return 0
    cp -r "$folder/site0" "$folder/site"
    grow_demo "$1" 1
    local twin
    for twin in LIVE DESIGN; do
        "$torvex" sql --install "$folder/site" "update TORVEX_PAGES_$twin set nodeId = 'bg.en.02.01' || substr(nodeId, 6),
            parent = 'bg.en.02.01' || substr(parent, 6) where pageId >= 1000000" >/dev/null
    done
    "$torvex" migrate --install "$folder/site" >/dev/null
    mv "$folder/site" "$folder/site$1"
}
for size in "${sizes[@]}"; do grow "$size"; done

for size in "${sizes[@]}"; do
    ports[$size]=$port
    serve "$torvex" "$folder/site$size" "$port" "$folder/kept.log"
    keeping[$size]=$server
    set_option "$folder/site$size" server page_cache_bytes 0
    serve "$torvex" "$folder/site$size" $((port + 1)) "$folder/anew.log"
    anew[$size]=$server
    port=$((port + 2))
done
site=http://127.0.0.1:${ports[0]}
page=$(home_page)
for size in "${sizes[@]}"; do
    keep_page "http://127.0.0.1:${ports[$size]}$page"
    same_bytes "$site$page" "http://127.0.0.1:${ports[$size]}$page"
    same_bytes "$site$page" "http://127.0.0.1:$((ports[$size] + 1))$page"
done
for _ in $(seq "$rounds"); do
    for size in "${sizes[@]}"; do
        measure "kept$size" "${keeping[$size]}" with_wrk 32 "http://127.0.0.1:${ports[$size]}$page"
        measure "made$size" "${anew[$size]}" with_wrk 32 "http://127.0.0.1:$((ports[$size] + 1))$page"
    done
done

# grown TITLE NAME SIZE
grown() {
    local rate p50 p99 us errors base_us base_p99
    figures_of "${2}0"
    base_us=$us base_p99=$p99
    figures_of "$2$3"
    printf '%-32s %7s/s%s (%s times)  processor %s us: %s times (goal 1.1) %s\n' "$1, $((pages + $3)) pages" \
        "$rate" "$(latencies)" "$(times "$p99" "$base_p99")" "$us" "$(times "$us" "$base_us")" "$errors"
}
for size in "${sizes[@]}"; do grown "kept page" kept "$size"; done
for size in "${sizes[@]}"; do grown "page made anew" made "$size"; done
