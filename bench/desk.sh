#!/bin/bash
# What the lists on an author's desk take on a large installation: the demo, grown to so many pages and images.
#
#   bench/desk.sh [PAGES] [IMAGES]        (default 100000 and 50000)
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/common.sh
pages=${1:-100000}
images=${2:-50000}
need python3
build_torvex
init_demo

grow_demo "$pages" "$images"
begin=$(date +%s.%N)
"$torvex" migrate --install "$folder/site"
echo "words and links taken in: $(awk -v a="$begin" -v b="$(date +%s.%N)" 'BEGIN {printf "%.1f s", b - a}')"
find "$folder/site/data" -name content.db -exec ls -l {} +

# Calls of one process, one behind the other, as the owner calls them: the time between request and answer.
python3 - "$torvex" "$folder/site" "$pages" <<'PYTHON'
import json, statistics, subprocess, sys, time

torvex, install, pages = sys.argv[1], sys.argv[2], int(sys.argv[3])
process = subprocess.Popen([torvex, "call", "--install", install, "--batch"], stdin=subprocess.PIPE,
                           stdout=subprocess.PIPE, text=True, bufsize=1)

def ask(call):
    process.stdin.write(json.dumps({"login": "sa", "calls": [call]}) + "\n")
    process.stdin.flush()
    answer = json.loads(process.stdout.readline())
    if "error" in answer or "results" not in answer: sys.exit(f"{call}: {answer}")
    return answer["results"][0]

def run(operation, **arguments):
    return ask({"on": "desk" if operation[0] != ":" else "cManager", "do": operation.lstrip(":"), "with": arguments})

def rows(result):
    return len(result.get("rows", [])) if isinstance(result, dict) else len(result) if isinstance(result, list) else repr(result)[:30]

def used():
    with open(f"/proc/{process.pid}/schedstat") as file: return int(file.read().split()[0]) / 1e6

def measure(what, goal, operation, **arguments):
    begin = time.perf_counter()
    answer = run(operation, **arguments)
    first = time.perf_counter() - begin
    times, work = [], []
    for _ in range(40):
        begin, before = time.perf_counter(), used()
        answer = run(operation, **arguments)
        times.append((time.perf_counter() - begin) * 1000)
        work.append(used() - before)
    p50, p95 = (lambda of: sorted(of)[len(of) // 2]), (lambda of: sorted(of)[len(of) * 19 // 20])
    print(f"{what:36} processor time {p50(work):6.1f} ms (p95 {p95(work):6.1f}), {p50(times):6.1f} ms (p95 {p95(times):6.1f}, "
          f"first {first * 1000:.0f}, goal {goal}), {rows(answer)} rows", flush=True)

middle = 1000000 + pages // 2
measure("pulse", 5, "pulse", site="bg", lang="en", pageId=middle, doing="typing")
for kind in ("mine", "approve", "publish", "marked", "dates"):
    measure(f"getWork {kind}", 50, "getWork", site="", lang="", kind=kind)
measure("getRecent", 50, "getRecent", site="bg", lang="en")
measure("getBranch of 2,163 pages", 50, "getBranch", pageIdent="bg.en.45")
for words in ("w", "wa", "walk", "garden", "garden walk", "the", "word5", f"word{pages // 3}", "zzz", str(middle)):
    measure(f"find {words}", 50, "find", words=words)
measure("find garden, pages alone", 50, "find", words="garden", kinds="page")
measure("getDeadLinks", 50, "getDeadLinks", site="bg", lang="en")
measure("getUses of a page", 50, "getUses", kind="page", id=str(middle))
measure("getUses of an image", 50, "getUses", kind="image", id="bg/grown/777.jpg")
measure("getUses of a folder of all images", 50, "getUses", kind="image", id="bg/grown/")
measure("getImpact of 47 pages", 50, "getImpact", pageIdent="bg.en.45.12")
measure("getImpact of 2,163 pages", 50, "getImpact", pageIdent="bg.en.45")
measure("compare", 50, "compare", pageIdent=str(middle))
measure("getHistory", 50, "getHistory", pageIdent=str(middle))
measure("getBodies", 50, "getBodies", pageIdent=str(middle))
measure("getHits of a tree by day", 50, "getHits", scope="bg.en", **{"from": "", "to": "", "by": "day"})
measure("saveBody", 50, ":saveBody", pageIdent=str(1000000 + 2), bodyId=1, bodyContent="<p>eleven <a href='page(1)'>x</a></p>" * 20)
process.stdin.close()
process.wait()
PYTHON
