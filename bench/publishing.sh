#!/bin/bash
# What visitors notice of a branch of 1,000 pages with five bodies each being published, moved or copied: the latency of
# the demo's home page alone, beside an author who only reads, and meanwhile, in one run on this machine. The second
# figure is what a further busy process costs on a machine of few cores; what the third adds to it is the change.
#
#   bench/publishing.sh [SECONDS] [publish|move|paste]...        (default 8, all of them)
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh
seconds=${1:-8}
shift || true
works=("${@:-}")
[ -n "${works[0]}" ] || works=(publish move paste)
need wrk curl
build_torvex
init_demo
rows() { "$torvex" sql --install "$folder/site" --json "$1"; }
first() { rows "$1" | sed -n '1s/^{"[^"]*":"\{0,1\}\([^"}]*\)"\{0,1\}.*/\1/p'; }
root=$(first "select nodeId from TORVEX_PAGES_DESIGN where parent = '' order by nodeId")
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
    for body in 1 2 3 4 5; do
        echo "insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText)" \
            "select pageId, $body, 1, 0, '<p>Text of a page.</p>' from TORVEX_PAGES_DESIGN where nodeId like '$branch%';"
    done
} | "$torvex" sql --install "$folder/site" >/dev/null
moved=$(first "select pageId from TORVEX_PAGES_DESIGN where nodeId = '$branch'")
mapfile -t parents < <(rows "select pageId from TORVEX_PAGES_DESIGN where parent = '$root' and nodeId <> '$branch' and type = 'F' and nodeId not like '%.99'" |
    sed 's/[^0-9]*\([0-9]*\).*/\1/')

serve_demo

call() {
    echo '{"login":"sa","calls":[{"on":"cManager","do":"'"$1"'","with":{'"$2"'}}]}' |
        "$torvex" call --install "$folder/site" --batch >>"$folder/answers.$3"
}
author_read() { call getSitemap '"site":"'"${root%.*}"'","lang":"'"${root#*.}"'"' read; }
author_publish() {
    call publishPageCascading '"pageIdent":"'"$branch"'"' publish
    rows "update TORVEX_PAGES_DESIGN set approveStatus = 1, editStatus = 'M' where nodeId like '$branch%'" >/dev/null
}
# From one folder of the site to the next and back.
author_move() {
    local parent
    for parent in "${parents[@]:0:2}"; do
        call movePage '"pageIdentFrom":"'"$moved"'","pageIdentTo":"'"$parent"'"' move
    done
}
author_paste() {
    call pastePage '"modeFrom":"D","pageIdentFrom":"'"$moved"'","pageIdentTo":"'"${parents[2]}"'","flag":1' paste
    rows "update TORVEX_PAGES_DESIGN set title = 'Copy ' || pageId where title like 'Page % (%'" >/dev/null
}
repeat() {
    while [ -d "$folder" ] && [ ! -e "$folder/enough" ]; do "author_$1"; done
}
latency() {
    wrk -t1 -c2 -d"$1"s --latency "$site/tvx.asp?pageId=1" | awk '$1 == "99%" {print $2}'
}

latency_beside() {
    repeat "$1" &
    latency "$seconds"
    touch "$folder/enough"  # what runs ends before the next measurement begins
    wait $!
    rm "$folder/enough"
}

echo "branch: $(rows "select count(*) as pages from TORVEX_PAGES_DESIGN where nodeId like '$branch%'")"
latency 2 >/dev/null
for work in "${works[@]}"; do
    echo "p99 of the home page: $(latency "$seconds")"
    echo "p99 beside an author who reads: $(latency_beside read)"
    echo "p99 during one $work of the branch after the other: $(latency_beside "$work")"
    echo "runs meanwhile: $(wc -l <"$folder/answers.$work"); the last answer: $(tail -1 "$folder/answers.$work" | cut -c1-120)"
done
