-- What waits for each author, which is counted every few seconds: the pages that can be approved now, and those that
-- can be published.
create index idx_torvex_pages_design_site_lang_nodeid_to_approve on TORVEX_PAGES_DESIGN (site, lang, nodeId)
  where (editStatus = 'M' or deleteStatus = 1) and coalesce(approveStatus, 0) = 0 and coalesce(lockStatus, 0) = 0;
create index idx_torvex_pages_design_site_lang_nodeid_to_publish on TORVEX_PAGES_DESIGN (site, lang, nodeId)
  where approveStatus = 1 and coalesce(lockStatus, 0) = 0;
