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

# Three levels of 46 below bg.en.40 and its neighbours; each page has the title and the bodies of one of the demo's
# and links to two others, so that all words and links of the demo stand on thousands of pages.
cat >"$folder/grow.sql" <<SQL
create table grown as with recursive n (x) as (select 0 union all select x + 1 from n where x < $pages - 1),
  level as (select x, x / 2163 as a, (x % 2163 - 1) / 47 as b, (x % 2163 - 1) % 47 as c, x % 2163 = 0 as top from n)
select 1000000 + x as pageId, case when top then 'bg.en.' || (40 + a)
  when c = 0 then 'bg.en.' || (40 + a) || '.' || (10 + b) else 'bg.en.' || (40 + a) || '.' || (10 + b) || '.' || (10 + c) end as nodeId,
  x from level;
create table model as select pageId, title, row_number() over (order by pageId) - 1 as i from TORVEX_PAGES_DESIGN
  where type = 'P' and site = 'bg' and lang = 'en';
insert into TORVEX_PAGES_DESIGN (pageId, nodeId, orderId, site, lang, parent, type, title, navigation, editStatus, editor, editingDate,
  onlineFrom, onlineTo, approveStatus)
select g.pageId, g.nodeId, g.x % 47 + 1, 'bg', 'en', substr(g.nodeId, 1, length(g.nodeId) - 3), 'P', m.title || ' ' || g.x, 'A',
  case when g.x % 200 < 2 then 'M' else 'P' end, g.x % 5 + 1, '2026-01-01 00:00:00', '', '', case when g.x % 200 = 1 then 1 else 0 end
from grown g inner join model m on m.i = g.x % (select count(*) from model);
insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, site, lang, parent, type, title, navigation, onlineFrom, onlineTo, online)
select pageId, nodeId, orderId, site, lang, parent, type, title, navigation, onlineFrom, onlineTo, pageId % 1000 <> 7
from TORVEX_PAGES_DESIGN where pageId >= 1000000;
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText)
select g.pageId, b.bodyId, b.bodyType, b.feedId, b.bodyText || ' <p>word' || g.x || ' <a href="page(' || (1000000 + g.x * 7 % $pages)
  || ')">a</a> <a href="page(' || (1000000 + g.x * 13 % $pages) || ')">b</a> <img src="/images/bg/grown/' || (g.x % $images) || '.jpg"></p>'
from grown g inner join model m on m.i = g.x % (select count(*) from model) inner join TORVEX_BODIES_DESIGN b on b.pageId = m.pageId;
insert into TORVEX_BODIES_LIVE (pageId, bodyId, bodyType, feedId, bodyText)
select pageId, bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId >= 1000000;
insert into TORVEX_IMAGES (img_site, img_fldId, img_title, img_filename, img_size, img_width, img_height)
with recursive n (x) as (select 0 union all select x + 1 from n where x < $images - 1)
select 'bg', '', m.title || ' picture ' || x, 'grown/' || x || '.jpg', 1000, 10, 10
from n inner join model m on m.i = x % (select count(*) from model);
drop table grown;
drop table model;
SQL
"$torvex" sql --install "$folder/site" <"$folder/grow.sql" >/dev/null
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
    for _ in range(9):
        begin, before = time.perf_counter(), used()
        answer = run(operation, **arguments)
        times.append((time.perf_counter() - begin) * 1000)
        work.append(used() - before)
    print(f"{what:36} {statistics.median(work):7.1f} ms of processor time, {statistics.median(times):7.1f} ms "
          f"(first {first * 1000:.0f}, goal {goal}), {rows(answer)} rows", flush=True)

middle = 1000000 + pages // 2
for kind in ("mine", "approve", "publish", "marked", "dates"):
    measure(f"getWork {kind}", 300, "getWork", site="", lang="", kind=kind)
measure("getRecent", 300, "getRecent", site="bg", lang="en")
measure("getBranch of 2,163 pages", 500, "getBranch", pageIdent="bg.en.45")
for words in ("w", "wa", "walk", "garden", "garden walk", "the", "word5", f"word{pages // 3}", "zzz", str(middle)):
    measure(f"find {words}", 150, "find", words=words)
measure("find garden, pages alone", 150, "find", words="garden", kinds="page")
measure("getDeadLinks", 500, "getDeadLinks", site="bg", lang="en")
measure("getUses of a page", 300, "getUses", kind="page", id=str(middle))
measure("getUses of an image", 300, "getUses", kind="image", id="bg/grown/777.jpg")
measure("getUses of a folder of all images", 500, "getUses", kind="image", id="bg/grown/")
measure("getImpact of 47 pages", 500, "getImpact", pageIdent="bg.en.45.12")
measure("getImpact of 2,163 pages", 1000, "getImpact", pageIdent="bg.en.45")
measure("compare", 300, "compare", pageIdent=str(middle))
measure("getHistory", 300, "getHistory", pageIdent=str(middle))
measure("getBodies", 300, "getBodies", pageIdent=str(middle))
measure("getHits of a tree by day", 300, "getHits", scope="bg.en", **{"from": "", "to": "", "by": "day"})
measure("saveBody", 300, ":saveBody", pageIdent=str(1000000 + 2), bodyId=1, bodyContent="<p>eleven <a href='page(1)'>x</a></p>" * 20)
process.stdin.close()
process.wait()
PYTHON
