-- The hits of each page and month: the pages of a year are told from some thousands of rows instead of a million.
-- Triggers keep them, whoever writes the hits.

create table TORVEX_LOGGING_MONTHS (
  site {text},
  lang {text},
  nodeId {text} not null,
  yyyymm {text} not null,
  hits {number} default 0,
  uniquehits {number} default 0,
  primary key (nodeId, yyyymm)
);

create index idx_torvex_logging_months_site_lang_yyyymm on TORVEX_LOGGING_MONTHS (site, lang, yyyymm);

insert into TORVEX_LOGGING_MONTHS (site, lang, nodeId, yyyymm, hits, uniquehits)
select min(site), min(lang), nodeId, substr(yyyymmdd, 1, 6), sum(coalesce(hits, 0)), sum(coalesce(uniquehits, 0))
from TORVEX_LOGGING group by nodeId, substr(yyyymmdd, 1, 6);

{upkeep of TORVEX_LOGGING_MONTHS}
