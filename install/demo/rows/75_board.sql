-- The message boards: their pages, categories and items. Categories show every way in which pictures can stand:
-- above (5), alternating (3), none (4), left (1), right (2), below (6). 'In flower now' has an archive; it and the
-- walks go over several pages.

insert into TORVEX_APPLICATIONS
  (app_id, app_name, app_description, app_href_public, app_href_admin, app_param_public, app_system, lock)
values
  (1, 'Message board', 'Dated entries in categories', '/torvex_msgBoard/', '/torvex/torvex_msgBoard/categories.asp', '', 1, '');

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock)
values
  (41, 'bg', 'en', 'Message board', 'Categories and their dated entries', 'board.html', 0, 0),
  (42, 'bg', 'de', 'Message board', 'Categories and their dated entries', 'board.html', 0, 0),
  (43, 'ri', 'en', 'Message board', 'Categories and their dated entries', 'board.html', 0, 0),
  (44, 'ri', 'de', 'Message board', 'Categories and their dated entries', 'board.html', 0, 0);

insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, app_param_public, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (331, 'bg.en.03.05', 5, 'bg', 'en', 'bg.en.03', 'A', 'News', 41, 0, 0, 1, 'catRoot=01', 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-11-02 10:00:00', 0, 0, 0),
  (332, 'bg.de.03.05', 5, 'bg', 'de', 'bg.de.03', 'A', 'Neuigkeiten', 42, 0, 0, 1, 'catRoot=01', 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-11-02 10:00:00', 0, 0, 0),
  (333, 'ri.en.07', 7, 'ri', 'en', 'ri.en', 'A', 'News', 43, 0, 0, 1, 'catRoot=01', 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-11-02 10:00:00', 0, 0, 0),
  (334, 'ri.de.05', 5, 'ri', 'de', 'ri.de', 'A', 'Neuigkeiten', 44, 0, 0, 1, 'catRoot=01', 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-11-02 10:00:00', 0, 0, 0);

insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
  (331, 1, 1, 0, 'News from the garden'),
  (331, 2, 1, 0, '<p>What flowers, what is being built, and what you can join in.</p>'),
  (332, 1, 1, 0, 'Neues aus dem Garten'),
  (332, 2, 1, 0, '<p>Was blüht, woran gebaut wird und wo Sie mitmachen können.</p>'),
  (333, 1, 1, 0, 'News from the institute'),
  (333, 2, 1, 0, '<p>New papers and data, talks, and finds among the cabinets.</p>'),
  (334, 1, 1, 0, 'Neues aus dem Institut'),
  (334, 2, 1, 0, '<p>Neue Aufsätze und Daten, Vorträge und Funde zwischen den Schränken.</p>');

insert into TORVEX_MSGB_CATEGORIES_DESIGN
  (msgB_Id, msgB_site, msgB_lang, msgB_catId, msgB_catTitle, msgB_catDesc, msgB_parent, msgB_itemOrder, msgB_archiveAfter, msgB_archiveVisible, msgB_linkText, msgB_imageAlignment, msgB_imageWidth, msgB_imageHeight, msgB_online, msgB_pageSize, msgB_deleted, msgB_modified)
values
  (1, 'bg', 'en', '01', 'Garden news', '', '', 1, 365, 0, '', 5, 640, 0, 1, 3, 0, 0),
  (2, 'bg', 'en', '01.01', 'In flower now', '', '01', 1, 365, 1, '', 3, 280, 0, 1, 3, 0, 0),
  (3, 'bg', 'en', '01.02', 'Walks and workshops', '', '01', 2, 365, 0, '', 4, 0, 0, 1, 4, 0, 0),
  (4, 'bg', 'en', '01.03', 'From the glasshouses', '', '01', 1, 365, 0, '', 1, 240, 0, 1, 0, 0, 0),
  (5, 'bg', 'en', '01.04', 'Plants with a story', '', '01', 3, 365, 0, '', 2, 240, 0, 1, 0, 0, 0),
  (6, 'bg', 'en', '01.05', 'Notes from the potting shed', '', '01', 1, 365, 0, '', 6, 420, 0, 1, 0, 0, 0),
  (11, 'bg', 'de', '01', 'Neues aus dem Garten', '', '', 1, 365, 0, '', 5, 640, 0, 1, 3, 0, 0),
  (12, 'bg', 'de', '01.01', 'Jetzt in Blüte', '', '01', 1, 365, 1, '', 3, 280, 0, 1, 3, 0, 0),
  (13, 'bg', 'de', '01.02', 'Führungen und Kurse', '', '01', 2, 365, 0, '', 4, 0, 0, 1, 4, 0, 0),
  (14, 'bg', 'de', '01.03', 'Aus den Gewächshäusern', '', '01', 1, 365, 0, '', 1, 240, 0, 1, 0, 0, 0),
  (15, 'bg', 'de', '01.04', 'Pflanzen mit Geschichte', '', '01', 3, 365, 0, '', 2, 240, 0, 1, 0, 0, 0),
  (16, 'bg', 'de', '01.05', 'Notizen aus dem Arbeitshof', '', '01', 1, 365, 0, '', 6, 420, 0, 1, 0, 0, 0),
  (21, 'ri', 'en', '01', 'Institute news', '', '', 1, 365, 0, '', 1, 200, 0, 1, 3, 0, 0),
  (22, 'ri', 'en', '01.01', 'Papers and data', '', '01', 1, 365, 1, '', 2, 200, 0, 1, 0, 0, 0),
  (23, 'ri', 'en', '01.02', 'Talks and visits', '', '01', 2, 365, 0, '', 4, 0, 0, 1, 0, 0, 0),
  (24, 'ri', 'en', '01.03', 'From the herbarium', '', '01', 1, 365, 0, '', 3, 220, 0, 1, 0, 0, 0),
  (31, 'ri', 'de', '01', 'Neues aus dem Institut', '', '', 1, 365, 0, '', 1, 200, 0, 1, 3, 0, 0),
  (32, 'ri', 'de', '01.01', 'Aufsätze und Daten', '', '01', 1, 365, 1, '', 2, 200, 0, 1, 0, 0, 0),
  (33, 'ri', 'de', '01.02', 'Vorträge und Besuche', '', '01', 2, 365, 0, '', 4, 0, 0, 1, 0, 0, 0),
  (34, 'ri', 'de', '01.03', 'Aus dem Herbar', '', '01', 1, 365, 0, '', 3, 220, 0, 1, 0, 0, 0);

insert into TORVEX_MSGB_ITEMS_DESIGN
  (msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash, msgB_deleted, msgB_modified)
values
  (1, 'bg', 'en', '01', 1, 'The Palm House opens its upper gallery',
   'After two winters under scaffolding the gallery is open again. From up there the crown of the date palm is at the height of your eyes, and on clear mornings you see as far as the river.<br>The stairs are narrow. A film in the entrance shows the view to those who stay below.',
   '8', 'More about the Palm House', '002/001/palm-house.jpg', '20261102', '20260101', '99991231', 1, 1, 0, 0),
  (2, 'bg', 'en', '01', 1, 'Longer evenings in the Night garden',
   'From May to September the gate by the river stays open until eleven on Fridays. Bring a jacket and leave the torch at home: the moths will thank you.',
   '10', 'More about the Night garden', '002/002/night-garden.jpg', '20261018', '20260101', '99991231', 1, 1, 0, 0),
  (3, 'bg', 'en', '01.01', 2, 'First snowdrops between the benches',
   'Three weeks early this year. Please stay on the path: where nothing shows yet, the next hundred are about to come up.',
   '17', 'How we count them', '002/002/snowdrops.jpg', '20261120', '20260101', '99991231', 1, 1, 0, 0),
  (4, 'bg', 'en', '01.01', 2, 'Saffron crocus on the sunny bank',
   'It flowers for ten days only, and only when the morning is dry. The red threads are the spice. We leave them where they are.',
   '', '', '', '20261012', '20260101', '99991231', 1, 0, 0, 0),
  (5, 'bg', 'en', '01.01', 2, 'Gentians on the limestone ridge',
   'The willow gentian is <i>Gentiana asclepiadea</i> to the botanists, and the bluest thing in the Alpine garden to everybody else.',
   '9', '', '002/002/alpine-garden.jpg', '20260908', '20260101', '99991231', 1, 0, 0, 0),
  (6, 'bg', 'en', '01.01', 2, 'The queen of the night, for one night',
   'She opened at nine and was over by four. Those who left an e-mail address at friends@lindhaven.example were called in time.',
   '', '', '002/002/night-garden.jpg', '20260716', '20260101', '99991231', 1, 0, 0, 0),
  (7, 'bg', 'en', '01.01', 2, 'Water lilies, from buds to plates',
   'The leaves of the giant water lily now measure a metre and forty. They carry a child in theory. In practice they carry frogs.',
   '', '', '002/001/glasshouse.jpg', '20260622', '20260101', '99991231', 1, 0, 0, 0),
  (8, 'bg', 'en', '01.01', 2, 'Cherry blossom along the long walk',
   'Sixty trees in nine days, and then it snowed petals.',
   '', '', '', '20260418', '20260101', '20260601', 1, 0, 0, 0),
  (9, 'bg', 'en', '01.01', 2, 'Winter aconite under the old lime',
   'Yellow before anything else dares.',
   '', '', '002/002/snowdrops.jpg', '20260209', '20260101', '20260401', 1, 0, 0, 0),
  (10, 'bg', 'en', '01.02', 3, 'Pruning old apple trees',
   'A morning with ladder and saw in the orchard. Tools are there, gloves are yours to bring. Twelve places.',
   '', '', '', '20270116', '20260101', '99991231', 1, 0, 0, 0),
  (11, 'bg', 'en', '01.02', 3, 'Winter walk with a lens',
   'Buds, bark and seed heads: what there is to see when there is nothing to see. Meet at the Palm House at two.',
   '8', '', '', '20270124', '20260101', '99991231', 1, 0, 0, 0),
  (12, 'bg', 'en', '01.02', 3, 'Sowing under glass',
   'What to sow now, what to leave until March, and why a window sill is warmer than it feels.',
   '', '', '', '20270213', '20260101', '99991231', 1, 0, 0, 0),
  (13, 'bg', 'en', '01.02', 3, 'Drawing plants',
   'Six afternoons with pencil and water colour among the papers of the exhibition. No experience needed, patience welcome.',
   '12', 'See the exhibition', '', '20270306', '20260101', '99991231', 1, 0, 0, 0),
  (14, 'bg', 'en', '01.02', 3, 'Bats and moths at dusk',
   'We listen with a detector and look with a white sheet and a lamp. In good weather only.',
   '10', '', '', '20270521', '20260101', '99991231', 1, 0, 0, 0),
  (15, 'bg', 'en', '01.02', 3, 'Grafting roses',
   'You take home one rose that is two.',
   '', '', '', '20270612', '20260101', '99991231', 1, 0, 0, 0),
  (16, 'bg', 'en', '01.03', 4, 'A new pane for the dome',
   'The last of 4,212 panes has been replaced. The first one is on show in the entrance: it was blown by mouth in 1887 and has a bubble in it.',
   '8', 'More about the Palm House', '002/001/glasshouse.jpg', '20261030', '20260101', '99991231', 1, 0, 0, 0),
  (17, 'bg', 'en', '01.03', 4, 'The cacao tree has fruit',
   'Three pods, straight from the trunk. They take five months to ripen and will not become chocolate.',
   '', '', '002/001/palm-house.jpg', '20260928', '20260101', '99991231', 1, 0, 0, 0),
  (18, 'bg', 'en', '01.04', 5, 'The monkey puzzle by the gate',
   'It came in 1891 as a seed in a sailor’s pocket, or so his granddaughter wrote to us. The letter hangs in the library.',
   '', '', '002/002/alpine-garden.jpg', '20260803', '20260101', '99991231', 1, 0, 0, 0),
  (19, 'bg', 'en', '01.04', 5, 'A fern older than its country',
   'Fossils of the royal fern from the quarry next door show the same fronds that you can touch behind the pond.',
   '', '', '002/001/glasshouse.jpg', '20260614', '20260101', '99991231', 1, 0, 0, 0),
  (20, 'bg', 'en', '01.05', 6, 'Why we leave the stalks',
   'Cut back in autumn, the border looks tidy and is empty. Left standing, it is a winter quarter for two hundred kinds of insects. We cut in March.',
   '', '', '002/002/snowdrops.jpg', '20261115', '20260101', '99991231', 1, 0, 0, 0),
  (21, 'bg', 'en', '01.05', 6, 'Peat is gone for good',
   'The last bag was used in 2019. What we use instead, and how it is mixed, is written on one page.',
   'https://www.lindhaven.example/mixtures', 'The mixtures on one page', '', '20260910', '20260101', '99991231', 1, 0, 0, 0);

insert into TORVEX_MSGB_ITEMS_DESIGN
  (msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash, msgB_deleted, msgB_modified)
values
  (22, 'bg', 'de', '01', 11, 'Die Galerie des Palmenhauses ist wieder offen',
   'Nach zwei Wintern hinter Gerüsten darf man wieder hinauf. Von oben steht die Krone der Dattelpalme auf Augenhöhe, und an klaren Morgen reicht der Blick bis zum Fluss.<br>Die Treppe ist schmal. Ein Film am Eingang zeigt die Aussicht allen, die unten bleiben.',
   '108', 'Mehr über das Palmenhaus', '002/001/palm-house.jpg', '20261102', '20260101', '99991231', 1, 1, 0, 0),
  (23, 'bg', 'de', '01', 11, 'Längere Abende im Nachtgarten',
   'Von Mai bis September bleibt das Tor am Fluss freitags bis elf Uhr offen. Nehmen Sie eine Jacke mit und lassen Sie die Lampe zu Hause: Die Falter danken es Ihnen.',
   '110', 'Mehr über den Nachtgarten', '002/002/night-garden.jpg', '20261018', '20260101', '99991231', 1, 1, 0, 0),
  (24, 'bg', 'de', '01.01', 12, 'Die ersten Schneeglöckchen zwischen den Bänken',
   'Drei Wochen früher als sonst. Bitte bleiben Sie auf dem Weg: Wo noch nichts zu sehen ist, kommen gerade die nächsten hundert.',
   '', '', '002/002/snowdrops.jpg', '20261120', '20260101', '99991231', 1, 1, 0, 0),
  (25, 'bg', 'de', '01.01', 12, 'Safran am Sonnenhang',
   'Er blüht nur zehn Tage und nur an trockenen Morgen. Die roten Fäden sind das Gewürz. Wir lassen sie, wo sie sind.',
   '', '', '', '20261012', '20260101', '99991231', 1, 0, 0, 0),
  (26, 'bg', 'de', '01.01', 12, 'Enzian auf dem Kalkrücken',
   'Der Schwalbenwurz-Enzian heißt bei Botanikern <i>Gentiana asclepiadea</i> und ist für alle anderen das Blaueste im Alpinum.',
   '109', '', '002/002/alpine-garden.jpg', '20260908', '20260101', '99991231', 1, 0, 0, 0),
  (27, 'bg', 'de', '01.01', 12, 'Die Königin der Nacht, für eine Nacht',
   'Um neun ging sie auf, um vier war sie verblüht. Wer seine Adresse bei freunde@lindhaven.example hinterlassen hatte, wurde rechtzeitig gerufen.',
   '', '', '002/002/night-garden.jpg', '20260716', '20260101', '99991231', 1, 0, 0, 0),
  (28, 'bg', 'de', '01.01', 12, 'Seerosen, von der Knospe bis zum Teller',
   'Die Blätter der Riesenseerose messen jetzt einen Meter vierzig. Sie tragen theoretisch ein Kind. Praktisch tragen sie Frösche.',
   '', '', '002/001/glasshouse.jpg', '20260622', '20260101', '99991231', 1, 0, 0, 0),
  (29, 'bg', 'de', '01.01', 12, 'Kirschblüte am langen Weg',
   'Sechzig Bäume in neun Tagen, und dann schneite es Blüten.',
   '', '', '', '20260418', '20260101', '20260601', 1, 0, 0, 0),
  (30, 'bg', 'de', '01.01', 12, 'Winterling unter der alten Linde',
   'Gelb, bevor sich sonst jemand traut.',
   '', '', '002/002/snowdrops.jpg', '20260209', '20260101', '20260401', 1, 0, 0, 0),
  (31, 'bg', 'de', '01.02', 13, 'Alte Apfelbäume schneiden',
   'Ein Vormittag mit Leiter und Säge im Obstgarten. Werkzeug ist da, Handschuhe bringen Sie mit. Zwölf Plätze.',
   '', '', '', '20270116', '20260101', '99991231', 1, 0, 0, 0),
  (32, 'bg', 'de', '01.02', 13, 'Winterspaziergang mit der Lupe',
   'Knospen, Rinde, Samenstände: was es zu sehen gibt, wenn es nichts zu sehen gibt. Treffpunkt um zwei am Palmenhaus.',
   '108', '', '', '20270124', '20260101', '99991231', 1, 0, 0, 0),
  (33, 'bg', 'de', '01.02', 13, 'Säen unter Glas',
   'Was jetzt in die Erde kommt, was bis März warten sollte und warum ein Fensterbrett wärmer ist, als es sich anfühlt.',
   '', '', '', '20270213', '20260101', '99991231', 1, 0, 0, 0),
  (34, 'bg', 'de', '01.02', 13, 'Pflanzen zeichnen',
   'Sechs Nachmittage mit Bleistift und Aquarell zwischen den Blättern der Ausstellung. Vorkenntnisse braucht es nicht, Geduld hilft.',
   '112', 'Zur Ausstellung', '', '20270306', '20260101', '99991231', 1, 0, 0, 0),
  (35, 'bg', 'de', '01.02', 13, 'Fledermäuse und Falter in der Dämmerung',
   'Wir hören mit dem Detektor und schauen mit Laken und Lampe. Nur bei gutem Wetter.',
   '110', '', '', '20270521', '20260101', '99991231', 1, 0, 0, 0),
  (36, 'bg', 'de', '01.02', 13, 'Rosen veredeln',
   'Sie nehmen eine Rose mit nach Hause, die zwei ist.',
   '', '', '', '20270612', '20260101', '99991231', 1, 0, 0, 0),
  (37, 'bg', 'de', '01.03', 14, 'Eine neue Scheibe für die Kuppel',
   'Die letzte von 4212 Scheiben ist ersetzt. Die erste steht am Eingang: 1887 mit dem Mund geblasen, mit einer Luftblase darin.',
   '108', 'Mehr über das Palmenhaus', '002/001/glasshouse.jpg', '20261030', '20260101', '99991231', 1, 0, 0, 0),
  (38, 'bg', 'de', '01.03', 14, 'Der Kakaobaum trägt',
   'Drei Früchte, direkt am Stamm. Sie reifen fünf Monate und werden keine Schokolade.',
   '', '', '002/001/palm-house.jpg', '20260928', '20260101', '99991231', 1, 0, 0, 0),
  (39, 'bg', 'de', '01.04', 15, 'Die Araukarie am Tor',
   'Sie kam 1891 als Samen in der Tasche eines Matrosen, so schrieb es uns seine Enkelin. Der Brief hängt in der Bibliothek.',
   '', '', '002/002/alpine-garden.jpg', '20260803', '20260101', '99991231', 1, 0, 0, 0),
  (40, 'bg', 'de', '01.04', 15, 'Ein Farn, älter als sein Land',
   'Versteinerungen aus dem Steinbruch nebenan zeigen dieselben Wedel des Königsfarns, die Sie hinter dem Teich anfassen können.',
   '', '', '002/001/glasshouse.jpg', '20260614', '20260101', '99991231', 1, 0, 0, 0),
  (41, 'bg', 'de', '01.05', 16, 'Warum wir die Stängel stehen lassen',
   'Im Herbst geschnitten ist das Beet ordentlich und leer. Stehen gelassen ist es ein Winterquartier für zweihundert Arten von Insekten. Wir schneiden im März.',
   '', '', '002/002/snowdrops.jpg', '20261115', '20260101', '99991231', 1, 0, 0, 0),
  (42, 'bg', 'de', '01.05', 16, 'Torf kommt nicht wieder',
   'Der letzte Sack war 2019 leer. Was wir stattdessen nehmen und wie es gemischt wird, steht auf einer Seite.',
   'https://www.lindhaven.example/mischungen', 'Die Mischungen auf einer Seite', '', '20260910', '20260101', '99991231', 1, 0, 0, 0);

insert into TORVEX_MSGB_ITEMS_DESIGN
  (msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash, msgB_deleted, msgB_modified)
values
  (43, 'ri', 'en', '01', 21, 'Twenty-eight years of plots',
   'The survey of the mountain plots has been counted for the twenty-eighth summer. Eleven species have moved up by more than fifty metres since 1998.',
   '203', 'Plants on the move', 'transect.svg', '20261105', '20260101', '99991231', 1, 1, 0, 0),
  (44, 'ri', 'en', '01', 21, 'A thousand new sheets',
   'The herbarium has taken in the collection of a village teacher: a thousand sheets, each with a weather note in her hand.',
   '206', 'About the herbarium', 'herbarium-sheet.svg', '20261009', '20260101', '99991231', 1, 1, 0, 0),
  (45, 'ri', 'en', '01', 21, 'Seeds that waited forty years',
   'Of a hundred seeds stored in 1986, sixty-one came up this spring. The slowest took eleven weeks.',
   '204', 'Why seeds wait', 'seeds.svg', '20260911', '20260101', '99991231', 1, 0, 0, 0),
  (46, 'ri', 'en', '01.01', 22, 'Survey plots 1998 to 2025, the data',
   'Counts of all plots as a table, with a note on each change of method.',
   'transect-1998-2025.csv', 'Download the table', 'transect.svg', '20261020', '20260101', '99991231', 1, 1, 0, 0),
  (47, 'ri', 'en', '01.01', 22, 'Germination after long storage',
   'What eight species have in common that still germinate after twenty-five years. Questions to seeds@lindhaven.example.',
   '', '', 'seeds.svg', '20260715', '20260101', '99991231', 1, 0, 0, 0),
  (48, 'ri', 'en', '01.01', 22, 'First snowdrops since 1981',
   'Forty winters in one table.',
   '', '', '', '20250301', '20260101', '20260101', 1, 0, 0, 0),
  (49, 'ri', 'en', '01.02', 23, 'What a herbarium is for',
   'An evening among cabinets, with twelve sheets on the table. The door opens at six.',
   '206', '', '', '20270121', '20260101', '99991231', 1, 0, 0, 0),
  (50, 'ri', 'en', '01.02', 23, 'How seeds keep time',
   'Lunch talk with microscope. Bring a seed that you have wondered about.',
   '204', '', '', '20270218', '20260101', '99991231', 1, 0, 0, 0),
  (51, 'ri', 'en', '01.02', 23, 'Counting a mountain',
   'How to find a plot again after ten years when the marks are gone, and why it matters.',
   '203', '', '', '20270318', '20260101', '99991231', 1, 0, 0, 0),
  (52, 'ri', 'en', '01.03', 24, 'The fern of 1907',
   'The oldest sheet with a colour note: light green below, it says, almost yellow. We can still see it.',
   '206', '', '001/male-fern-1907.jpg', '20261028', '20260101', '99991231', 1, 0, 0, 0),
  (53, 'ri', 'en', '01.03', 24, 'Labels in five hands',
   'One sheet, five names in a hundred and twenty years, and each of them right in its time.',
   '', '', 'herbarium-sheet.svg', '20260818', '20260101', '99991231', 1, 0, 0, 0);

insert into TORVEX_MSGB_ITEMS_DESIGN
  (msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash, msgB_deleted, msgB_modified)
values
  (54, 'ri', 'de', '01', 31, 'Achtundzwanzig Jahre auf denselben Flächen',
   'Die Flächen am Berg sind im achtundzwanzigsten Sommer gezählt. Elf Arten sind seit 1998 mehr als fünfzig Meter nach oben gewandert.',
   '303', 'Pflanzen auf dem Weg nach oben', 'transect.svg', '20261105', '20260101', '99991231', 1, 1, 0, 0),
  (55, 'ri', 'de', '01', 31, 'Tausend neue Bogen',
   'Das Herbar hat die Sammlung einer Dorfschullehrerin übernommen: tausend Bogen, jeder mit einer Notiz zum Wetter in ihrer Handschrift.',
   '306', 'Über das Herbar', 'herbarium-sheet.svg', '20261009', '20260101', '99991231', 1, 1, 0, 0),
  (56, 'ri', 'de', '01', 31, 'Samen, die vierzig Jahre gewartet haben',
   'Von hundert Samen, die 1986 eingelagert wurden, keimten in diesem Frühjahr einundsechzig. Der langsamste brauchte elf Wochen.',
   '304', 'Warum Samen warten', 'seeds.svg', '20260911', '20260101', '99991231', 1, 0, 0, 0),
  (57, 'ri', 'de', '01.01', 32, 'Die Flächen 1998 bis 2025, die Daten',
   'Alle Zählungen als Tabelle, mit einer Bemerkung zu jeder Änderung des Verfahrens.',
   'transect-1998-2025.csv', 'Tabelle herunterladen', 'transect.svg', '20261020', '20260101', '99991231', 1, 1, 0, 0),
  (58, 'ri', 'de', '01.01', 32, 'Keimung nach langer Lagerung',
   'Was acht Arten gemeinsam haben, die nach fünfundzwanzig Jahren noch keimen. Fragen an samen@lindhaven.example.',
   '', '', 'seeds.svg', '20260715', '20260101', '99991231', 1, 0, 0, 0),
  (59, 'ri', 'de', '01.01', 32, 'Erste Schneeglöckchen seit 1981',
   'Vierzig Winter in einer Tabelle.',
   '', '', '', '20250301', '20260101', '20260101', 1, 0, 0, 0),
  (60, 'ri', 'de', '01.02', 33, 'Wozu ein Herbar da ist',
   'Ein Abend zwischen Schränken, mit zwölf Bogen auf dem Tisch. Die Tür ist ab sechs offen.',
   '306', '', '', '20270121', '20260101', '99991231', 1, 0, 0, 0),
  (61, 'ri', 'de', '01.02', 33, 'Wie Samen die Zeit messen',
   'Mittagsvortrag mit Mikroskop. Bringen Sie einen Samen mit, der Ihnen Fragen stellt.',
   '304', '', '', '20270218', '20260101', '99991231', 1, 0, 0, 0),
  (62, 'ri', 'de', '01.02', 33, 'Einen Berg zählen',
   'Wie man eine Fläche nach zehn Jahren wiederfindet, wenn die Marken fort sind, und warum das wichtig ist.',
   '303', '', '', '20270318', '20260101', '99991231', 1, 0, 0, 0),
  (63, 'ri', 'de', '01.03', 34, 'Der Farn von 1907',
   'Der älteste Bogen mit einer Farbnotiz: unten hellgrün, steht da, fast gelb. Man sieht es noch.',
   '306', '', '001/male-fern-1907.jpg', '20261028', '20260101', '99991231', 1, 0, 0, 0),
  (64, 'ri', 'de', '01.03', 34, 'Etiketten in fünf Handschriften',
   'Ein Bogen, fünf Namen in hundertzwanzig Jahren, und jeder zu seiner Zeit der richtige.',
   '', '', 'herbarium-sheet.svg', '20260818', '20260101', '99991231', 1, 0, 0, 0);

insert into TORVEX_MSGB_CATEGORIES_LIVE
  (msgB_Id, msgB_site, msgB_lang, msgB_catId, msgB_catTitle, msgB_catDesc, msgB_parent, msgB_itemOrder, msgB_archiveAfter, msgB_archiveVisible, msgB_linkText, msgB_imageAlignment, msgB_imageWidth, msgB_imageHeight, msgB_online, msgB_pageSize)
select msgB_Id, msgB_site, msgB_lang, msgB_catId, msgB_catTitle, msgB_catDesc, msgB_parent, msgB_itemOrder, msgB_archiveAfter, msgB_archiveVisible, msgB_linkText, msgB_imageAlignment, msgB_imageWidth, msgB_imageHeight, msgB_online, msgB_pageSize
from TORVEX_MSGB_CATEGORIES_DESIGN;

insert into TORVEX_MSGB_ITEMS_LIVE
  (msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash)
select msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash
from TORVEX_MSGB_ITEMS_DESIGN;
