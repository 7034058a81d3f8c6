-- Grows the demo to :pages pages and :images images; grow_demo of common.sh runs it. Three levels of 46 below bg.en.40
-- and its neighbours; each page has the title and the bodies of one of the demo's and links to two others, so that all
-- words and links of the demo stand on thousands of pages. Menus show the highest of them alone. bg.en.40 is as wide as
-- a branch can be, with 98 pages: the last 52 of all stand there.
create table grown as with recursive n (x) as (select 0 union all select x + 1 from n where x < :pages - 1),
  level as (select x, x / 2163 as a, (x % 2163 - 1) / 47 as b, (x % 2163 - 1) % 47 as c, x % 2163 = 0 as top from n)
select 1000000 + x as pageId, case when top then 'bg.en.' || (40 + a)
  when c = 0 then 'bg.en.' || (40 + a) || '.' || (10 + b) else 'bg.en.' || (40 + a) || '.' || (10 + b) || '.' || (10 + c) end as nodeId,
  x from level;
update grown set nodeId = 'bg.en.40.' || substr('0' || (x - :pages + 53 + case when x - :pages > -44 then 46 else 0 end), -2)
where x >= :pages - 52;
create table model as select pageId, title, row_number() over (order by pageId) - 1 as i from TORVEX_PAGES_DESIGN
  where type = 'P' and site = 'bg' and lang = 'en';
insert into TORVEX_PAGES_DESIGN (pageId, nodeId, orderId, site, lang, parent, type, title, navigation, editStatus, editor, editingDate,
  onlineFrom, onlineTo, approveStatus)
select g.pageId, g.nodeId, g.x % 47 + 1, 'bg', 'en', substr(g.nodeId, 1, length(g.nodeId) - 3), 'P', m.title || ' ' || g.x,
  case when length(g.nodeId) = 8 then 'A' else '' end,
  case when g.x % 200 < 2 then 'M' else 'P' end, g.x % 5 + 1, '2026-01-01 00:00:00', '', '', case when g.x % 200 = 1 then 1 else 0 end
from grown g inner join model m on m.i = g.x % (select count(*) from model);
insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, site, lang, parent, type, title, navigation, onlineFrom, onlineTo, online)
select pageId, nodeId, orderId, site, lang, parent, type, title, navigation, onlineFrom, onlineTo, pageId % 1000 <> 7
from TORVEX_PAGES_DESIGN where pageId >= 1000000;
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText)
select g.pageId, b.bodyId, b.bodyType, b.feedId, b.bodyText || ' <p>word' || g.x || ' <a href="page(' || (1000000 + g.x * 7 % :pages)
  || ')">a</a> <a href="page(' || (1000000 + g.x * 13 % :pages) || ')">b</a> <img src="/images/bg/grown/' || (g.x % :images) || '.jpg"></p>'
from grown g inner join model m on m.i = g.x % (select count(*) from model) inner join TORVEX_BODIES_DESIGN b on b.pageId = m.pageId;
insert into TORVEX_BODIES_LIVE (pageId, bodyId, bodyType, feedId, bodyText)
select pageId, bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId >= 1000000;
insert into TORVEX_IMAGES (img_site, img_fldId, img_title, img_filename, img_size, img_width, img_height)
with recursive n (x) as (select 0 union all select x + 1 from n where x < :images - 1)
select 'bg', '', m.title || ' picture ' || x, 'grown/' || x || '.jpg', 1000, 10, 10
from n inner join model m on m.i = x % (select count(*) from model);
drop table grown;
drop table model;
