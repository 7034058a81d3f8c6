#!/bin/bash
# Measures the whole server beside nginx, which serves the same bytes from a file, in one run on this machine:
# requests per second of both and their ratio, the latencies, and processor time per request.
#
#   bench/serve.sh [--seconds N] [--rounds N] [--plain]
#
# --plain switches the check of links and the groups of visitors off.
#
# The demo's home page is measured as it is kept (whole, compressed, and when the browser knows it already), and made anew for
# every request by a second server that keeps none; nginx with a cache of its own stands before that one, too, which is how
# others do it. And a static file of some kilobytes. Everything runs on 127.0.0.1 and in a temporary folder. What is missing
# (nginx, wrk) is installed from Debian's packages.
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
keeping=$server
# The settings are read when a server starts.
printf '\n' >>"$folder/site/torvex.toml"
sed -i 's/^\[server\]/[server]\npage_cache_bytes = 0/' "$folder/site/torvex.toml"
grep -q '^page_cache_bytes = 0' "$folder/site/torvex.toml"
anew_port=$((port + 1))
serve "$torvex" "$folder/site" "$anew_port" "$folder/anew.log"
anew=$server

page=$(home_page)
static=/stylesheets/shared/core.css
mkdir -p "$folder/www/stylesheets/shared" "$folder/nginx"
chmod 755 "$folder"
curl -s "$site$page" >"$folder/www/page.html"
curl -s "$site$static" >"$folder/www$static"
gzip -9 -k "$folder/www/page.html"
mkdir -p "$folder/nginx/kept"
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
    gzip_static on;
    proxy_cache_path $folder/nginx/kept keys_zone=kept:10m;
    server { listen 127.0.0.1:$nginx_port reuseport; root $folder/www; }
    server {
        listen 127.0.0.1:$((nginx_port + 1)) reuseport;
        location / {
            proxy_pass http://127.0.0.1:$anew_port;
            proxy_cache kept;
            proxy_cache_valid 200 60s;
            proxy_ignore_headers Cache-Control Set-Cookie Vary;
        }
    }
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

tag_of() { curl -s -I "$1" | tr -d '\r' | sed -n 's/^ETag: //p'; }
kept=http://127.0.0.1:$port$page
made=http://127.0.0.1:$anew_port$page
nginx_page=http://127.0.0.1:$nginx_port/page.html
# What is kept after its first views.
for _ in 1 2 3; do curl -s -o /dev/null "$kept"; curl -s -o /dev/null -H 'Accept-Encoding: gzip' "$kept"; sleep 0.3; done
known=$(tag_of "$kept")
nginx_known=$(tag_of "$nginx_page")
for _ in $(seq "$rounds"); do
    load kept "$keeping" "$kept"
    load nginx-page "$nginx" "$nginx_page"
    load gzip "$keeping" "$kept" "Accept-Encoding: gzip"
    load nginx-gzip "$nginx" "$nginx_page" "Accept-Encoding: gzip"
    load known "$keeping" "$kept" "If-None-Match: $known"
    load nginx-known "$nginx" "$nginx_page" "If-None-Match: $nginx_known"
    load cached "$nginx" "http://127.0.0.1:$((nginx_port + 1))$page"
    load made "$anew" "$made"
    load file "$keeping" "$site$static"
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
report "kept page" kept nginx-page
report "kept page, compressed" gzip nginx-gzip
report "kept page, known" known nginx-known
report "page made anew" made nginx-page
report "static file" file nginx-file
report "kept page, nginx's own" kept cached
