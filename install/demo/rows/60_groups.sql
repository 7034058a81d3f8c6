-- Who may read: group 1 (everybody) at the four roots, group 0 (as the parent) below.

insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId)
select pageId, case when parent = '' then 1 else 0 end from TORVEX_PAGES_DESIGN;
