-- What the designs of pages are found by, while authors type: one row for each page, with its words, each once. How
-- words are marked stands with those that write them.
create table TORVEX_PAGE_WORDS (
  pageId {number} not null primary key,
  words {text}
);

{index of TORVEX_PAGE_WORDS}

-- Where texts lead, by the twin ("D" or "L") that they stand in. A body has its number, meta data that of its tag below
-- zero. A page is known by its number, or by the node that stands in the text. A file is known by its path, a document
-- maybe by its title, in the site that is named, or none: that of the page.
create table TORVEX_LINKS (
  pageId {number} not null,
  linkTwin {text} not null,
  bodyId {number} not null,
  linkKind {text} not null,
  linkPage {number} default 0,
  linkSite {text} default '',
  linkTarget {text} default ''
);

create index idx_torvex_links_pageid_linktwin on TORVEX_LINKS (pageId, linkTwin);
create index idx_torvex_links_linkpage_linktwin on TORVEX_LINKS (linkPage, linkTwin);
create index idx_torvex_links_linkkind_linktarget_linksite on TORVEX_LINKS (linkKind, linkTarget, linkSite);

create index idx_torvex_pages_design_app_system_folder on TORVEX_PAGES_DESIGN (app_system_folder);
create index idx_torvex_pages_live_app_system_folder on TORVEX_PAGES_LIVE (app_system_folder);
