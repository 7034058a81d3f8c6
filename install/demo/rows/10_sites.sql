-- Two sites in two languages, and the page that the address without a page shows.

insert into TORVEX_LANGUAGES
  (lang, name, charset_id, lock)
values
  ('en', 'English', 1, 0),
  ('de', 'Deutsch', 1, 0);

insert into TORVEX_SITES
  (site, name, description, lock)
values
  ('bg', 'Botanic Garden', 'The website for visitors of Lindhaven Botanic Garden', 0),
  ('ri', 'Plant Institute', 'The website of the research institute', 0);

insert into TORVEX_SITES_LANGUAGES
  (site, lang, title, lock)
values
  ('bg', 'en', 'Lindhaven Botanic Garden', 0),
  ('bg', 'de', 'Botanischer Garten Lindhaven', 0),
  ('ri', 'en', 'Lindhaven Plant Institute', 0),
  ('ri', 'de', 'Pflanzeninstitut Lindhaven', 0);

insert into TORVEX_SETUP (parameter, value, dataType, loginId) values ('tvx_default_pageId', '1', 'N', 0);
