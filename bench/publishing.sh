#!/bin/bash
# What visitors notice of a branch of 1,000 pages being published: the latency of the demo's home page before and
# meanwhile, in one run on this machine.
#
#   bench/publishing.sh [SECONDS]        (default 8)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-8}
command -v wrk >/dev/null || ${SUDO:-$([ "$(id -u)" -eq 0 ] || echo sudo)} apt-get install -y --no-install-recommends wrk >/dev/null

[ -f build/release/build.ninja ] || cmake --preset release -DTORVEX_TESTS=OFF >/dev/null
cmake --build --preset release --target torvex >/dev/null
torvex=$PWD/build/release/torvex
folder=$(mktemp -d /tmp/torvex-bench-XXXXXX)
server=
publisher=
finish() {
    for process in $publisher $server; do kill "$process" 2>/dev/null && wait "$process" 2>/dev/null || true; done
    rm -rf "$folder"
}
trap finish EXIT

port=$((20000 + RANDOM % 10000))
"$torvex" init "$folder/site" --demo >/dev/null
root=$("$torvex" sql --install "$folder/site" --json "select nodeId from TORVEX_PAGES_DESIGN where parent = '' order by nodeId" |
    sed -n '1s/.*"nodeId":"\([^"]*\)".*/\1/p')
branch=$root.90

# The branch: eleven pages with ninety below each.
page() {
    echo "insert into TORVEX_PAGES_DESIGN (nodeId, orderId, site, lang, parent, type, title, editStatus, approveStatus)" \
        "values ('$1', $2, '${root%.*}', '${root#*.}', '${1%.*}', 'P', 'Page $1', 'M', 1);"
}
{
    page "$branch" 90
    for i in $(seq -w 1 11); do
        page "$branch.$i" "$((10#$i))"
        for j in $(seq -w 1 90); do page "$branch.$i.$j" "$((10#$j))"; done
    done
    echo "insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText)" \
        "select pageId, 1, 1, 0, '<p>Text of a page.</p>' from TORVEX_PAGES_DESIGN where nodeId like '$branch%';"
} | "$torvex" sql --install "$folder/site" >/dev/null
pages=$("$torvex" sql --install "$folder/site" --json "select count(*) as n from TORVEX_PAGES_DESIGN where nodeId like '$branch%'")

"$torvex" serve --install "$folder/site" --listen 127.0.0.1:$port 2>"$folder/torvex.log" &
server=$!
for _ in $(seq 100); do curl -s -o /dev/null "http://127.0.0.1:$port/error.asp" && break; sleep 0.05; done

publish_for_ever() {
    while true; do
        echo '{"login":"sa","calls":[{"on":"cManager","do":"publishPageCascading","with":{"pageIdent":"'"$branch"'"}}]}' |
            "$torvex" call --install "$folder/site" --batch >>"$folder/answers"
        "$torvex" sql --install "$folder/site" \
            "update TORVEX_PAGES_DESIGN set approveStatus = 1, editStatus = 'M' where nodeId like '$branch%'" >/dev/null
    done
}
latency() {
    wrk -t1 -c2 -d"$1"s --latency "http://127.0.0.1:$port/tvx.asp?pageId=1" | awk '/99%/ {print $2}'
}

echo "branch: $pages"
latency 2 >/dev/null
echo "p99 of the home page: $(latency "$seconds")"
publish_for_ever &
publisher=$!
echo "p99 while the branch is published again and again: $(latency "$seconds")"
kill "$publisher" && wait "$publisher" 2>/dev/null || true
publisher=
echo "runs of the branch meanwhile: $(wc -l <"$folder/answers"); answers: $(sort -u "$folder/answers")"
