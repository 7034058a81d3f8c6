# shellcheck shell=bash
# What the parts of bench/serve.sh share; sourced by them, with `seconds`, `rounds`, `plain` and `torvex` given.
set -euo pipefail
. bench/common.sh
: "${seconds:?is set by bench/serve.sh}" "${rounds:?}" "${torvex:?}"
need nginx wrk curl

static=/stylesheets/shared/core.css

plain_demo() {
    "$torvex" sql --install "$folder/site" "update TORVEX_SETUP set value = '0'
        where parameter in ('torvex_hyperlink_check', 'torvex_extranet') and loginId = 0" >/dev/null
}

# serve_both: the demo as ever (`keeping`), and beside it by a server that keeps no pages (`anew` at `anew_port`).
# shellcheck disable=SC2034 # which the parts read
serve_both() {
    serve_demo
    keeping=$server
    set_option "$folder/site" server page_cache_bytes 0
    anew_port=$((port + 1))
    serve "$torvex" "$folder/site" "$anew_port" "$folder/anew.log"
    anew=$server
}

# serve_nginx SERVERS: sets `nginx` to the process; it may read what is in `$folder/www`.
serve_nginx() {
    chmod 755 "$folder"
    mkdir -p "$folder/nginx"
    cat >"$folder/nginx/nginx.conf" <<CONF
worker_processes auto;
daemon off;
pid $folder/nginx/pid;
error_log $folder/nginx/error.log;
events { worker_connections 16384; }
http {
    access_log off;
    sendfile on;
    tcp_nopush on;
    keepalive_requests 1000000;
    include /etc/nginx/mime.types;
    client_body_temp_path $folder/nginx; proxy_temp_path $folder/nginx; fastcgi_temp_path $folder/nginx;
    uwsgi_temp_path $folder/nginx; scgi_temp_path $folder/nginx;
    gzip_static on;
    $1
}
CONF
    PATH=$PATH:/usr/sbin nginx -c "$folder/nginx/nginx.conf" 2>"$folder/nginx/start.log" &
    nginx=$!
    processes+=("$nginx")
    for _ in $(seq 100); do [ -e "$folder/nginx/pid" ] && return; sleep 0.05; done
    cat "$folder/nginx/start.log" >&2
    return 1
}

# Puts the home page at ADDRESS, its compressed form, and the static file of the demo to where nginx serves from.
copy_for_nginx() {
    mkdir -p "$folder/www${static%/*}"
    curl -sk "$1" >"$folder/www/page.html"
    gzip -9 -k "$folder/www/page.html"
    cp "$folder/site/wwwroot$static" "$folder/www$static"
    echo "page: $(stat -c %s "$folder/www/page.html") bytes; file $static: $(stat -c %s "$folder/www$static") bytes"
}

# keep_page ADDRESS: what is kept is so after its first views.
keep_page() {
    for _ in 1 2 3; do
        curl -sk -o /dev/null "$1"
        curl -sk -o /dev/null -H 'Accept-Encoding: gzip' "$1"
        sleep 0.3
    done
}

# same_bytes OURS NGINX'S [OPTION OF CURL]...: what differs can't be compared.
same_bytes() {
    local ours=$1 theirs=$2
    shift 2
    cmp <(curl -sk --compressed "$@" "$ours") <(curl -sk --compressed "$@" "$theirs") || {
        echo "$ours and $theirs are different" >&2
        return 1
    }
}

# with_wrk CONNECTIONS URL [HEADER]: prints requests, those per second, p50 and p99 in ms, and what went wrong.
with_wrk() {
    wrk -t1 -c"$1" -d"${seconds}s" --latency ${3:+-H "$3"} "$2" | awk '
        function ms(text) { return text + 0 == 0 ? 0 : text * (text ~ /us$/ ? 0.001 : text ~ /ms$/ ? 1 : text ~ /m$/ ? 60000 : 1000) }
        /Requests\/sec/ {rate = $2} /50%/ {p50 = $2} /99%/ {p99 = $2} / requests in / {count = $1}
        /Non-2xx/ {bad = $0} /Socket errors/ {bad = bad $0}
        END {printf "%d %.0f %.2f %.2f %s\n", count, rate, ms(p50), ms(p99), bad}'
}

# with_h2load CONNECTIONS STREAMS URL [HEADER]: the same without latencies, over HTTP/2.
with_h2load() {
    h2load -t1 -c"$1" -m"$2" -D"$seconds" ${4:+-H "$4"} "$3" | awk '
        /^finished in/ {rate = $4} /^Application protocol/ && $3 != "h2" {bad = bad " " $0}
        /^requests:/ {count = $8; if ($10 + $12 + $14) bad = bad $0} /^status codes:/ {if ($5 + $7 + $9) bad = bad $0}
        END {printf "%d %.0f - - %s\n", count, rate, bad}'
}

# measure NAME PROCESSES CLIENT...: one round; adds "requests/s p50 p99 us-of-processor errors" to NAME's figures. Of several
# processes, each with its children, it is "us+us".
measure() {
    local name=$1 measured=$2 before after figures
    shift 2
    before=$(for process in $measured; do ticks_of_all "$process"; done)
    figures=$("$@")
    after=$(for process in $measured; do ticks_of_all "$process"; done)
    paste -d' ' <(echo "$before") <(echo "$after") | awk -v figures="$figures" -v hz="$(getconf CLK_TCK)" '
        BEGIN {split(figures, of)}
        {us = us (NR > 1 ? "+" : "") sprintf("%.1f", of[1] ? ($2 - $1) / hz * 1e6 / of[1] : 0)}
        END {sub(/^[^ ]* [^ ]* [^ ]* [^ ]* ?/, "", figures); print of[2], of[3], of[4], us, figures}' >>"$folder/$name"
}

# The best round of each, as noise only ever slows down.
best() { sort -rn "$folder/$1" | head -n 1; }

# figures_of NAME: sets `rate`, `p50`, `p99`, `us` and `errors`.
figures_of() { read -r rate p50 p99 us errors <<<"$(best "$1")"; }

times() { awk -v a="$1" -v b="$2" 'BEGIN {printf "%.2f", b ? a / b : 0}'; }
# The latencies, where there are some.
latencies() { [ "$p99" = - ] || echo "  p50 $p50 ms  p99 $p99 ms"; }

# beside_nginx TITLE OURS NGINX'S [GOAL OF THE RATIO] [GOAL OF THE PROCESSOR TIME]: "-" for none.
beside_nginx() {
    local rate p50 p99 us errors its_rate its_us its_p99
    figures_of "$3"
    its_rate=$rate its_us=$us its_p99=$p99
    figures_of "$2"
    printf '%-32s %7s/s  nginx %7s/s  ratio %s (goal %s)%s%s  processor %s us, nginx %s: %s times (goal %s) %s\n' "$1" \
        "$rate" "$its_rate" "$(times "$rate" "$its_rate")" "${4:--}" "$(latencies)" \
        "$([ "$its_p99" = - ] || echo ", nginx $its_p99")" "$us" "$its_us" "$(times "$us" "$its_us")" "${5:--}" "$errors"
}
