-- Content that is fetched when a page is served. The sources lie among the demo's own documents, so that they
-- work without a network; an address would stand in the column feedURL. One list of seeds serves both languages:
-- the parameters tell the stylesheet which.

insert into TORVEX_FEEDS_HTML
  (feedId, feedSite, feedLang, feedName, feedDescription, feedURL, feedFile, feedParameters, lock)
values
  (1, 'bg', 'en', 'Notices', 'The notice board at the gate', '', '004/notices.html', '', ''),
  (2, 'bg', 'de', 'Aushang', 'Das Brett am Tor', '', '004/aushang.html', '', '');

insert into TORVEX_FEEDS_XML
  (feedId, feedSite, feedLang, feedName, feedDescription, feedURL_XML, feedFile_XML, feedURL_XSL, feedFile_XSL,
   feedParameters, feedPreserveWhiteSpace, lock)
values
  (1, 'ri', 'en', 'Seed list', 'What the seed bank can spare', '', '002/seeds.xml', '', '002/seeds.xsl', 'most=20,language=en', 0, ''),
  (2, 'ri', 'de', 'Samenliste', 'Was die Saatgutbank abgeben kann', '', '002/seeds.xml', '', '002/seeds.xsl', 'most=20,language=de', 0, '');
