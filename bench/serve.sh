#!/bin/bash
# Measures the whole server beside nginx, which serves the same bytes from a file, in one run on this machine:
# requests per second of both and their ratio, the latencies, and processor time per request.
#
#   bench/serve.sh [--seconds N] [--rounds N] [--plain]
#
# --plain switches the check of links and the groups of visitors off.
#
# Three answers are measured: the demo's home page, assembled for every request; a static file of some
# kilobytes; and the page again through a session that comes back with its cookie. Everything runs on
# 127.0.0.1 and in a temporary folder. What is missing (nginx, wrk) is installed from Debian's packages.
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh

seconds=5
rounds=3
plain=
while [ $# -gt 0 ]; do
    case "$1" in
        --seconds) seconds=$2; shift 2 ;;
        --rounds) rounds=$2; shift 2 ;;
        --plain) plain=1; shift ;;
        *) echo "usage: $0 [--seconds N] [--rounds N] [--plain]" >&2; exit 2 ;;
    esac
done

need nginx wrk curl
build_torvex
init_demo
[ -z "$plain" ] || "$torvex" sql --install "$folder/site" "update TORVEX_SETUP set value = '0'
    where parameter in ('torvex_hyperlink_check', 'torvex_extranet') and loginId = 0" >/dev/null
nginx_port=$((port + 10001))
serve_demo

page=$(home_page)
static=/stylesheets/shared/core.css
mkdir -p "$folder/www/stylesheets/shared" "$folder/nginx"
chmod 755 "$folder"
curl -s "$site$page" >"$folder/www/page.html"
curl -s "$site$static" >"$folder/www$static"
echo "page $page: $(stat -c %s "$folder/www/page.html") bytes; file $static: $(stat -c %s "$folder/www$static") bytes"

cat >"$folder/nginx/nginx.conf" <<CONF
worker_processes auto;
daemon off;
pid $folder/nginx/pid;
error_log $folder/nginx/error.log;
events { worker_connections 1024; }
http {
    access_log off;
    sendfile on;
    tcp_nopush on;
    keepalive_requests 1000000;
    include /etc/nginx/mime.types;
    client_body_temp_path $folder/nginx; proxy_temp_path $folder/nginx; fastcgi_temp_path $folder/nginx;
    uwsgi_temp_path $folder/nginx; scgi_temp_path $folder/nginx;
    server { listen 127.0.0.1:$nginx_port reuseport; root $folder/www; }
}
CONF
PATH=$PATH:/usr/sbin nginx -c "$folder/nginx/nginx.conf" 2>/dev/null &
nginx=$!
processes+=("$nginx")
sleep 0.5

# Of a process and its children.
ticks_of_all() {
    # shellcheck disable=SC2046
    ticks "$1" $(pgrep -P "$1" || true)
}

# load NAME PROCESS URL [HEADER]: one round; appends "requests/s p50 p99 us-of-processor" to NAME's figures.
load() {
    local before after
    before=$(ticks_of_all "$2")
    wrk -t1 -c32 -d"${seconds}s" --latency ${4:+-H "$4"} "$3" >"$folder/wrk.txt"
    after=$(ticks_of_all "$2")
    awk -v used=$((after - before)) -v hz="$(getconf CLK_TCK)" '
        /Requests\/sec/ {rate = $2} /50%/ {p50 = $2} /99%/ {p99 = $2} / requests in / {count = $1}
        /Non-2xx/ {bad = $0} /Socket errors/ {bad = bad $0}
        END {printf "%.0f %s %s %.1f %s\n", rate, p50, p99, used / hz * 1e6 / count, bad}' "$folder/wrk.txt" >>"$folder/$1"
}

# The best round of each, as noise only ever slows down.
best() { sort -rn "$folder/$1" | head -n 1; }

cookie=$(curl -s -D - -o /dev/null "$site$page" | sed -n 's/^[Ss]et-[Cc]ookie: \([^;]*\).*/\1/p')
for _ in $(seq "$rounds"); do
    load page "$server" "$site$page"
    load nginx-page "$nginx" "http://127.0.0.1:$nginx_port/page.html"
    load cookie "$server" "$site$page" "Cookie: $cookie"
    load file "$server" "$site$static"
    load nginx-file "$nginx" "http://127.0.0.1:$nginx_port$static"
done

report() {
    local ours theirs
    read -r -a ours <<<"$(best "$2")"
    read -r -a theirs <<<"$(best "$3")"
    printf '%-22s %8s/s  nginx %8s/s  ratio %.3f  p50 %s  p99 %s  processor %s us/request (nginx %s) %s\n' "$1" \
        "${ours[0]}" "${theirs[0]}" "$(echo "${ours[0]} ${theirs[0]}" | awk '{print $1 / $2}')" "${ours[1]}" "${ours[2]}" \
        "${ours[3]}" "${theirs[3]}" "${ours[*]:4}"
}
report "home page" page nginx-page
report "home page, one visitor" cookie nginx-page
report "static file" file nginx-file
