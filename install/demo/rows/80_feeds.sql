-- Content that is fetched when a page is served. The sources lie among the demo's own documents, so that they
-- work without a network; an address would stand in the column feedURL.

insert into TORVEX_FEEDS_HTML
  (feedId, feedSite, feedLang, feedName, feedDescription, feedURL, feedFile, feedParameters, lock)
values
  (1, 'bg', 'en', 'Notices', 'The notice board at the gate', '', 'notices.html', '', '');

insert into TORVEX_FEEDS_XML
  (feedId, feedSite, feedLang, feedName, feedDescription, feedURL_XML, feedFile_XML, feedURL_XSL, feedFile_XSL,
   feedParameters, feedPreserveWhiteSpace, lock)
values
  (1, 'ri', 'en', 'Seed list', 'What the seed bank can spare', '', 'seeds.xml', '', 'seeds.xsl', 'most=20', 0, '');
