-- Hits lie in a store of their own: a visitor's hit never waits for an author. One row per page and
-- day, so that one statement can insert it or add to it.

create table TORVEX_LOGGING (
  site {text},
  lang {text},
  nodeId {text} not null,
  yyyymmdd {text} not null,
  yyyy {text},
  mm {text},
  dd {text},
  hits {number} default 0,
  uniquehits {number} default 0,
  primary key (nodeId, yyyymmdd)
);

create index idx_torvex_logging_site_lang_yyyymmdd on TORVEX_LOGGING (site, lang, yyyymmdd);
