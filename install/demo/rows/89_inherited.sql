-- A page for which no row above says who may read it asks its parent, and so for each tag of its site for which it has
-- no value.

insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId)
select pageId, 0 from TORVEX_PAGES_DESIGN a where not exists (
  select 1 from TORVEX_PAGES_GROUPS_DESIGN b where b.pageId = a.pageId);

insert into TORVEX_PAGES_METADATA_DESIGN
  (metaData_pageId, metaData_id, metaData_inherited, metaData_value)
select a.pageId, b.metaData_id, 1, ''
from TORVEX_PAGES_DESIGN a
inner join TORVEX_METADATA b on b.metaData_site = a.site
where not exists (
  select 1 from TORVEX_PAGES_METADATA_DESIGN c
  where c.metaData_pageId = a.pageId and c.metaData_id = b.metaData_id);
