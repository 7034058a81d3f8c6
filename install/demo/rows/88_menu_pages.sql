-- All pages are in the menus but the roots, the system's, those of the service folders (they stand in the footer) and
-- those to log in and out by and to show a second factor.
update TORVEX_PAGES_DESIGN set dynMenu = '1'
where parent <> '' and nodeId not like '%.99%'
  and pageId not in (20, 44, 45, 120, 144, 145, 210, 310, 391, 392)
  and parent not in (select nodeId from TORVEX_PAGES_DESIGN where pageId in (20, 120, 210, 310));
