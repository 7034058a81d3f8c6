-- What an author has typed into a body and not saved yet. It is hers alone, and no version of the page.
create table TORVEX_DRAFTS (
  loginId {number} not null,
  pageId {number} not null,
  bodyId {number} not null,
  html {text} default '',
  bytes {number} default 0,
  base {text} default '',
  moment {date}
);

create unique index idx_torvex_drafts_loginid_pageid_bodyid on TORVEX_DRAFTS (loginId, pageId, bodyId);
create index idx_torvex_drafts_pageid on TORVEX_DRAFTS (pageId);
