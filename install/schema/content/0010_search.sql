-- Titles are completed while they are typed.
create index idx_torvex_pages_live_lang_site_title on TORVEX_PAGES_LIVE (lang, site, title);
