#!/bin/bash
# How lists of many records scroll and are filtered in a browser, with the goals beside it.
#
#   bench/lists.sh [RECORDS]        (default 50000)
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh
build_torvex
init_demo
sed "s/:records/${1:-50000}/g" bench/lists.sql | "$torvex" sql --install "$folder/site" >/dev/null
cd tests/browser
[ -d node_modules ] || npm ci --no-audit --no-fund
TORVEX_PROGRAM=$torvex node authoring/lists.mjs "$folder/site"
