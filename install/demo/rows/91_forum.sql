-- What the pages of the forum have besides what all pages have.

update TORVEX_PAGES_LIVE set
  app_param_public = (select a.app_param_public from TORVEX_PAGES_DESIGN a where a.pageId = TORVEX_PAGES_LIVE.pageId),
  app_system_folder = (select a.app_system_folder from TORVEX_PAGES_DESIGN a where a.pageId = TORVEX_PAGES_LIVE.pageId)
where pageId between 351 and 363;
