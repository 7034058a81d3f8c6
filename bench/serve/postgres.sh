#!/bin/bash
# The part "postgres" of bench/serve.sh: the home page on a PostgreSQL server of its own behind a socket, kept and made anew, for one
# client and for 16; and how many times a page that is made anew asks that server and waits for its answer.
if [ -z "${TORVEX_TEST_POSTGRES:-}" ]; then
    # Debian keeps the server's programs off the path.
    compgen -G "/usr/lib/postgresql/*/bin/initdb" >/dev/null || (. bench/common.sh && need initdb:postgresql)
    exec tests/with_postgres.sh "$0"
fi
. bench/serve/common.sh
need strace psql:postgresql-client

port=$((20000 + RANDOM % 10000))
site=http://127.0.0.1:$port
database=${TORVEX_TEST_POSTGRES/dbname=*/dbname=bench}
psql -q "$TORVEX_TEST_POSTGRES" -c "create database bench"
"$torvex" init "$folder/site" --demo --database "$database" >/dev/null
psql -q "$database" -c "analyze"
serve_both
page=$(home_page)
made=http://127.0.0.1:$anew_port$page
socket=$(sed -n 's/.*host=\([^ ]*\) .*/\1/p' <<<"$TORVEX_TEST_POSTGRES")
postmaster=$(head -n 1 "$socket/data/postmaster.pid")
keep_page "$site$page"
same_bytes "$site$page" "$made"

for _ in $(seq "$rounds"); do
    for clients in 1 16; do
        measure "kept$clients" "$keeping $postmaster" with_wrk "$clients" "$site$page"
        measure "made$clients" "$anew $postmaster" with_wrk "$clients" "$made"
    done
done

# alone TITLE NAME GOAL
alone() {
    local rate p50 p99 us errors
    figures_of "$2"
    printf "%-32s %7s/s (goal %s)%s  processor %s us (ours + the database's) %s\n" "$1" "$rate" "$3" "$(latencies)" "$us" "$errors"
}
alone "page made anew, 1 client" made1 1500
alone "page made anew, 16 clients" made16 4000
alone "kept page, 1 client" kept1 -
alone "kept page, 16 clients" kept16 -

# A round trip is an answer that is read after something was sent on the same socket to the database, between a request and its
# answer. All workers have their statements ready by now. What other threads ask meanwhile may be among it, so the median counts.
strace -f -yy -e trace=network -o "$folder/trace" -p "$anew" 2>"$folder/strace.log" &
tracing=$!
for _ in $(seq 100); do grep -q attached "$folder/strace.log" && break; sleep 0.05; done
urls=()
for _ in $(seq 25); do urls+=("$made" -o /dev/null); done
curl -s "${urls[@]}"
kill -INT "$tracing"
wait "$tracing" || true
awk 'function of_socket() {match($0, /\([0-9]+/); return substr($0, RSTART, RLENGTH)}
    /"GET \// {count = 0; asked = 1}
    / sendto\([0-9]+<UNIX/ {sent[of_socket()] = 1}
    / recvfrom\([0-9]+<UNIX/ {count += sent[of_socket()]; sent[of_socket()] = 0}
    / sendmsg\([0-9]+<TCP/ && asked {print count; asked = 0}' "$folder/trace" | sort -n >"$folder/trips"
[ "$(wc -l <"$folder/trips")" -ge 20 ] || { echo "the trace shows too few requests" >&2; exit 1; }
echo "round trips of a page made anew: $(sed -n 13p "$folder/trips") (from $(head -n 1 "$folder/trips") to $(tail -n 1 "$folder/trips"); goal 4)"
