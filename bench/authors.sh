#!/bin/bash
# What an author waits for on a large site, with the goals beside it: the demo, grown to so many pages and images, in a
# browser. It takes half an hour on a machine that has nothing else to do; ONLY='branch|key' measures some of it.
#
#   bench/authors.sh [PAGES] [IMAGES]        (default 100000 and 50000)
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh
build_torvex
init_demo
grow_demo "${1:-100000}" "${2:-50000}"
"$torvex" migrate --install "$folder/site"
cd tests/browser
[ -d node_modules ] || npm ci --no-audit --no-fund
TORVEX_PROGRAM=$torvex node authoring/speed.mjs "$folder/site"
