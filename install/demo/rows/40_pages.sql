-- The page trees. 0 as template, stylesheet or base template asks the parent page;
-- -1 is no page and no application.

-- Lindhaven Botanic Garden
insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (1, 'bg.en', 1, 'bg', 'en', '', 'P', 'Home', 1, 1, 1, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (2, 'bg.en.01', 1, 'bg', 'en', 'bg.en', 'F', 'Visit', 2, 0, 0, -1, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (3, 'bg.en.01.01', 1, 'bg', 'en', 'bg.en.01', 'F', 'Plan your visit', 0, 0, 0, -1, '', -1, -1, -1, '', '', '0', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (4, 'bg.en.01.01.01', 1, 'bg', 'en', 'bg.en.01.01', 'P', 'Opening hours and tickets', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (5, 'bg.en.01.01.02', 2, 'bg', 'en', 'bg.en.01.01', 'P', 'Getting here', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (7, 'bg.en.02', 2, 'bg', 'en', 'bg.en', 'P', 'The garden', 2, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (8, 'bg.en.02.01', 1, 'bg', 'en', 'bg.en.02', 'P', 'Palm House', 3, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (9, 'bg.en.02.02', 2, 'bg', 'en', 'bg.en.02', 'P', 'Alpine garden', 3, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (10, 'bg.en.02.03', 3, 'bg', 'en', 'bg.en.02', 'P', 'Night garden', 3, 2, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (11, 'bg.en.03', 3, 'bg', 'en', 'bg.en', 'P', 'What’s on', 2, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (12, 'bg.en.03.01', 1, 'bg', 'en', 'bg.en.03', 'P', 'Paper gardens', 3, 0, 0, -1, 'A', -1, -1, -1, '20250901', '20291231', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (13, 'bg.en.03.02', 2, 'bg', 'en', 'bg.en.03', 'P', 'A hundred and fifty years', 0, 0, 0, -1, 'A', -1, -1, -1, '20370101', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (14, 'bg.en.03.03', 3, 'bg', 'en', 'bg.en.03', 'P', 'Orchid week 2025', 0, 0, 0, -1, 'A', -1, -1, -1, '', '20250316', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (15, 'bg.en.04', 4, 'bg', 'en', 'bg.en', 'F', 'Stories', 3, 0, 0, -1, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (16, 'bg.en.04.01', 1, 'bg', 'en', 'bg.en.04', 'P', 'The palm that outgrew its house', 0, 0, 0, -1, 'M', 8, 17, 1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (17, 'bg.en.04.02', 2, 'bg', 'en', 'bg.en.04', 'P', 'Counting snowdrops', 0, 0, 0, -1, 'M', 16, 9, 1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (18, 'bg.en.05', 5, 'bg', 'en', 'bg.en', 'P', 'Garden shop', 2, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (19, 'bg.en.06', 6, 'bg', 'en', 'bg.en', 'P', 'Volunteering', 2, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'N', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (20, 'bg.en.99', 99, 'bg', 'en', 'bg.en', 'F', 'Service', 4, 0, 0, -1, '', -1, -1, -1, '', '', '0', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (21, 'bg.en.99.01', 1, 'bg', 'en', 'bg.en.99', 'P', 'Imprint and privacy', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (22, 'bg.en.99.02', 2, 'bg', 'en', 'bg.en.99', 'P', 'Accessibility', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (23, 'bg.en.99.03', 3, 'bg', 'en', 'bg.en.99', 'P', 'Leaflet to print', 5, 3, 2, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0);

-- Botanischer Garten Lindhaven
insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (101, 'bg.de', 1, 'bg', 'de', '', 'P', 'Start', 6, 4, 3, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (102, 'bg.de.01', 1, 'bg', 'de', 'bg.de', 'F', 'Besuch', 7, 0, 0, -1, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (103, 'bg.de.01.01', 1, 'bg', 'de', 'bg.de.01', 'F', 'Besuch planen', 0, 0, 0, -1, '', -1, -1, -1, '', '', '0', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (104, 'bg.de.01.01.01', 1, 'bg', 'de', 'bg.de.01.01', 'P', 'Öffnungszeiten und Preise', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (105, 'bg.de.01.01.02', 2, 'bg', 'de', 'bg.de.01.01', 'P', 'Anfahrt', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (107, 'bg.de.02', 2, 'bg', 'de', 'bg.de', 'P', 'Der Garten', 7, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (108, 'bg.de.02.01', 1, 'bg', 'de', 'bg.de.02', 'P', 'Palmenhaus', 8, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (109, 'bg.de.02.02', 2, 'bg', 'de', 'bg.de.02', 'P', 'Alpinum', 8, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (110, 'bg.de.02.03', 3, 'bg', 'de', 'bg.de.02', 'P', 'Nachtgarten', 8, 5, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (111, 'bg.de.03', 3, 'bg', 'de', 'bg.de', 'P', 'Programm', 7, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (112, 'bg.de.03.01', 1, 'bg', 'de', 'bg.de.03', 'P', 'Gärten auf Papier', 8, 0, 0, -1, 'A', -1, -1, -1, '20250901', '20291231', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (115, 'bg.de.04', 4, 'bg', 'de', 'bg.de', 'F', 'Geschichten', 8, 0, 0, -1, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (116, 'bg.de.04.01', 1, 'bg', 'de', 'bg.de.04', 'P', 'Die Palme, der ihr Haus zu klein wurde', 0, 0, 0, -1, 'M', 108, 110, 101, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (120, 'bg.de.99', 99, 'bg', 'de', 'bg.de', 'F', 'Service', 9, 0, 0, -1, '', -1, -1, -1, '', '', '0', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (121, 'bg.de.99.01', 1, 'bg', 'de', 'bg.de.99', 'P', 'Impressum und Datenschutz', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (122, 'bg.de.99.02', 2, 'bg', 'de', 'bg.de.99', 'P', 'Barrierefreiheit', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0);

-- Lindhaven Plant Institute
insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (201, 'ri.en', 1, 'ri', 'en', '', 'P', 'Institute', 10, 6, 4, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (202, 'ri.en.01', 1, 'ri', 'en', 'ri.en', 'F', 'Research', 12, 0, 0, -1, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (203, 'ri.en.01.01', 1, 'ri', 'en', 'ri.en.01', 'P', 'Plants on the move', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (204, 'ri.en.01.02', 2, 'ri', 'en', 'ri.en.01', 'P', 'Why seeds wait', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (206, 'ri.en.02', 2, 'ri', 'en', 'ri.en', 'P', 'Herbarium', 12, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (207, 'ri.en.02.01', 1, 'ri', 'en', 'ri.en.02', 'P', 'Visits and loans', 11, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (208, 'ri.en.03', 3, 'ri', 'en', 'ri.en', 'P', 'Publications', 11, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (209, 'ri.en.04', 4, 'ri', 'en', 'ri.en', 'P', 'Field course 2027', 11, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'N', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (210, 'ri.en.99', 99, 'ri', 'en', 'ri.en', 'F', 'Service', 13, 0, 0, -1, '', -1, -1, -1, '', '', '0', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (211, 'ri.en.99.01', 1, 'ri', 'en', 'ri.en.99', 'P', 'Imprint and accessibility', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0);

-- Pflanzeninstitut Lindhaven
insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (301, 'ri.de', 1, 'ri', 'de', '', 'P', 'Institut', 14, 7, 5, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (302, 'ri.de.01', 1, 'ri', 'de', 'ri.de', 'F', 'Forschung', 16, 0, 0, -1, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (303, 'ri.de.01.01', 1, 'ri', 'de', 'ri.de.01', 'P', 'Pflanzen auf dem Weg nach oben', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (304, 'ri.de.01.02', 2, 'ri', 'de', 'ri.de.01', 'P', 'Warum Samen warten', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (306, 'ri.de.02', 2, 'ri', 'de', 'ri.de', 'P', 'Herbarium', 16, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (308, 'ri.de.03', 3, 'ri', 'de', 'ri.de', 'P', 'Veröffentlichungen', 15, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (310, 'ri.de.99', 99, 'ri', 'de', 'ri.de', 'F', 'Service', 17, 0, 0, -1, '', -1, -1, -1, '', '', '0', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (311, 'ri.de.99.01', 1, 'ri', 'de', 'ri.de.99', 'P', 'Impressum und Barrierefreiheit', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0);
