-- What visitors search for, by day: how often, and how often nothing was found. One row per search page, word and day,
-- so that one statement can insert it or add to it. How often in all stands in TORVEX_SEARCH_LOG.

create table TORVEX_SEARCH_DAYS (
  site {text},
  lang {text},
  search_pageId {number} not null,
  search_word {text} not null,
  yyyymmdd {text} not null,
  searches {number} default 0,
  withoutResult {number} default 0,
  primary key (search_pageId, search_word, yyyymmdd)
);

create index idx_torvex_search_days_site_lang_yyyymmdd on TORVEX_SEARCH_DAYS (site, lang, yyyymmdd);
