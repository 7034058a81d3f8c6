#!/bin/bash
# The part "connections" of bench/serve.sh: what the kept page costs with 1, 100, 1,000 and 10,000 connections: 32 at work while the
# others rest between two requests, and all at work, there beside nginx. They are fewer than 10,000 where there may be too few open files.
# The server reckons with two open files for each connection; only root may have more than it was given.
ulimit -n 32768 2>/dev/null || ulimit -n "$(ulimit -Hn)"
. bench/serve/common.sh
need python3

busy=32
init_demo
set_option "$folder/site" limits connections 12000
set_option "$folder/site" limits connections_per_address 12000
set_option "$folder/site" limits idle_seconds 600
serve_demo
most=$(sed -n 's/.* warning \([0-9]*\) connections in place of .*/\1/p' "$folder/torvex.log")
most=$((${most:-10100} - 100)) # some are about to end while others are opened
counts=(1 100 1000 "$((most < 10000 ? most : 10000))")
page=$(home_page)
copy_for_nginx "$site$page"
nginx_port=$((port + 20))
serve_nginx "server { listen 127.0.0.1:$nginx_port reuseport backlog=4096; root $folder/www; }"
nginx_page=http://127.0.0.1:$nginx_port/page.html
keep_page "$site$page"
same_bytes "$site$page" "$nginx_page"

# beside_resting COUNT COMMAND...: while so many connections are held open.
beside_resting() {
    local count=$1 ready='' lost='' holder
    shift
    rm -f "$folder/to" "$folder/from"
    mkfifo "$folder/to" "$folder/from"
    python3 bench/serve/hold.py "$port" "$count" "$page" <"$folder/to" >"$folder/from" &
    holder=$!
    exec 8>"$folder/to" 9<"$folder/from"
    read -r ready <&9 && [ "$ready" = ready ]
    "$@"
    exec 8>&-
    read -r lost <&9
    exec 9<&-
    wait "$holder"
    [ "$lost" -eq 0 ] || { echo "the server ended $lost of $count connections" >&2; return 1; }
}
# Opening 10,000 takes a second, which the rate is not to be about.
at_work() {
    local seconds=$seconds
    [ "$2" -le 1000 ] || seconds=$((seconds + 5))
    measure "$1" "$3" with_wrk "$2" "$4"
}
at_rest_beside() { echo $(($1 > busy ? $1 - busy : 0)); }
working_among() { echo $(($1 > busy ? busy : $1)); }

for _ in $(seq "$rounds"); do
    for count in "${counts[@]}"; do
        beside_resting "$(at_rest_beside "$count")" measure "rest$count" "$server" with_wrk "$(working_among "$count")" "$site$page"
        at_work "work$count" "$count" "$server" "$site$page"
        at_work "nginx-work$count" "$count" "$nginx" "$nginx_page"
    done
done

# With one connection nothing is done together, so that hundred are what more is compared with.
for count in "${counts[@]}"; do
    figures_of rest100
    base=$us
    figures_of "rest$count"
    printf '%-32s %7s/s%s  processor %s us: %s times that of 100 (goal 1.1) %s\n' "$(working_among "$count") of $count at work" "$rate" \
        "$(latencies)" "$us" "$(times "$us" "$base")" "$errors"
done
for count in "${counts[@]}"; do
    figures_of nginx-work100
    nginx_base=$us
    figures_of "nginx-work$count"
    nginx_growth=$(times "$us" "$nginx_base")
    figures_of work100
    base=$us
    figures_of "work$count"
    beside_nginx "$count, all at work" "work$count" "nginx-work$count" 1.0 \
        "-; to that of 100 $(times "$us" "$base"), nginx's $nginx_growth; goal 1.1"
done
