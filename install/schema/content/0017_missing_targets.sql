-- What links of designs lead to and isn't there, kept by triggers on whatever writes links, pages and images, so that
-- nobody has to look at all links to find the few that are dead. Numbers of pages that miss one of their twins; images
-- of no register. More may stand here than is missing or linked, but nothing lacks: those that ask look again.
create table TORVEX_MISSING_PAGES (
  linkPage {number} not null primary key
);

create table TORVEX_MISSING_IMAGES (
  linkSite {text} not null,
  linkTarget {text} not null,
  primary key (linkSite, linkTarget)
);

insert into TORVEX_MISSING_PAGES (linkPage)
select distinct k.linkPage from TORVEX_LINKS k where k.linkPage > 0 and k.linkTwin = 'D'
and not (exists (select 1 from TORVEX_PAGES_LIVE l where l.pageId = k.linkPage)
  and exists (select 1 from TORVEX_PAGES_DESIGN d where d.pageId = k.linkPage));

insert into TORVEX_MISSING_IMAGES (linkSite, linkTarget)
select k.linkSite, k.linkTarget from TORVEX_LINKS k
where k.linkKind = 'image' and k.linkTwin = 'D' and not exists (select 1 from TORVEX_IMAGES i
  where i.img_site = k.linkSite and i.img_filename = k.linkTarget)
group by k.linkSite, k.linkTarget;

{upkeep of TORVEX_MISSING_PAGES and TORVEX_MISSING_IMAGES}

create index idx_torvex_pages_live_pageid_offline on TORVEX_PAGES_LIVE (pageId) where coalesce(online, 0) <> 1;
