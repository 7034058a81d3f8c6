-- The search: a page in each language of both sites.

insert into TORVEX_APPLICATIONS
  (app_id, app_name, app_description, app_href_public, app_href_admin, app_param_public, app_system, lock)
values
  (381, 'Search', 'Pages and documents by their words', '/torvex_search/search.asp', '/torvex/torvex_search/search.asp', '', 1, '');

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock)
values
  (381, 'bg', 'en', 'Search', 'The search form and its results', 'search.html', 0, 0),
  (382, 'bg', 'de', 'Search', 'The search form and its results', 'search.html', 0, 0),
  (383, 'ri', 'en', 'Search', 'The search form and its results', 'search.html', 0, 0),
  (384, 'ri', 'de', 'Search', 'The search form and its results', 'search.html', 0, 0);

insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (381, 'bg.en.07.91', 91, 'bg', 'en', 'bg.en.07', 'A', 'Search', 381, 0, 0, 381, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (382, 'bg.de.05.91', 91, 'bg', 'de', 'bg.de.05', 'A', 'Suche', 382, 0, 0, 381, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (383, 'ri.en.05.91', 91, 'ri', 'en', 'ri.en.05', 'A', 'Search', 383, 0, 0, 381, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (384, 'ri.de.04.91', 91, 'ri', 'de', 'ri.de.04', 'A', 'Suche', 384, 0, 0, 381, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0);

insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
  (381, 1, 1, 0, 'Search the garden'),
  (382, 1, 1, 0, 'Im Garten suchen'),
  (383, 1, 1, 0, 'Search the institute'),
  (384, 1, 1, 0, 'Im Institut suchen');

-- The pages of the site in its language, and all documents of the site, by all forms of some of the words. What a
-- visitor may not see is never shown.
insert into TORVEX_SEARCH
  (search_pageId, search_catalogName, search_catalogLocation, search_includePages, search_includeDocuments,
   search_includeDocumentTypes, search_properties, search_sortOrder, search_maxResults, search_resultsPerPage,
   search_wordLength, search_match, search_derivation, search_security)
values
  (381, 'torvex', 0, 3, 3, 1, 'all', 1, 200, 6, 2, 1, 3, 1),
  (382, 'torvex', 0, 3, 3, 1, 'all', 1, 200, 6, 2, 1, 3, 1),
  (383, 'torvex', 0, 3, 3, 1, 'all', 1, 200, 6, 2, 1, 3, 1),
  (384, 'torvex', 0, 3, 3, 1, 'all', 1, 200, 6, 2, 1, 3, 1);
