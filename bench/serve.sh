#!/bin/bash
# Measures the whole server on this machine, beside nginx with the same bytes wherever it has the like: requests per second and
# their ratio, latencies, processor time per request, and the goal of each figure.
#
#   bench/serve.sh [--seconds N] [--rounds N] [--plain] [PART...]        (default 5 seconds, 3 rounds, all parts)
#
#   pages         the demo's home page as it is kept (whole, compressed, known to the browser), and made anew; a static file
#   tls           the kept page over https; full and resumed handshakes
#   http2         the kept page and a file over HTTP/2, with one request and with many under way on a connection
#   postgres      the home page on a PostgreSQL server, and how often it asks that server
#   growth        the home page of the demo with 1,000, 10,000 and 100,000 pages more
#   connections   the kept page beside up to 10,000 open connections, at rest or at work
#   start         the time to the first page, and the memory that a server takes
#
# --plain switches the check of links and the groups of visitors off in the first three. Each part is a script in bench/serve with
# a demo of its own. Everything runs on 127.0.0.1 and in temporary folders. What is missing is installed from Debian's packages.
set -euo pipefail
cd "$(dirname "$0")/.."

export seconds=5 rounds=3 plain=
parts=()
while [ $# -gt 0 ]; do
    case "$1" in
        --seconds) seconds=$2; shift 2 ;;
        --rounds) rounds=$2; shift 2 ;;
        --plain) plain=1; shift ;;
        pages | tls | http2 | postgres | growth | connections | start) parts+=("$1"); shift ;;
        *) sed -n '5,13s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
    esac
done
[ ${#parts[@]} -gt 0 ] || parts=(pages tls http2 postgres growth connections start)

. bench/common.sh
build_torvex
export torvex
for part in "${parts[@]}"; do
    echo "== $part"
    bash "bench/serve/$part.sh"
done
