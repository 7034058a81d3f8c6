-- Media: folders, who may read them, and the files in them. A folder's number has three digits a level, and so has
-- its path ("002/001"); the site's own folder has none. Drawings (SVG) have no width and height of their own here.

insert into TORVEX_IMAGES_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) values
  ('bg', '001', 'For friends', 1, ''),
  ('bg', '002', 'Press', 1, ''),
  ('bg', '002001', 'Glasshouses', 2, '002'),
  ('bg', '002002', 'Outdoors', 2, '002'),
  ('ri', '001', 'Herbarium sheets', 1, '');

insert into TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) values
  ('bg', '001', 'For friends', 1, ''),
  ('bg', '002', 'Maps and leaflets', 1, ''),
  ('bg', '002001', 'For children', 2, '002'),
  ('bg', '003', 'For volunteers', 1, ''),
  ('bg', '004', 'Feeds', 1, ''),
  ('ri', '001', 'Data', 1, ''),
  ('ri', '001001', 'Methods', 2, '001'),
  ('ri', '002', 'Feeds', 1, '');

-- The sites' own folders are open to everybody (1). Of the others two ask for a login, and the rest ask the folder
-- above (0).
insert into TORVEX_FOLDERS_GROUPS (fld_type, fld_site, fld_id, groupId) values
  ('img', 'bg', '', 1), ('img', 'ri', '', 1), ('doc', 'bg', '', 1), ('doc', 'ri', '', 1),
  ('img', 'bg', '001', 2), ('img', 'bg', '001', 4), ('doc', 'bg', '001', 2), ('doc', 'bg', '001', 4),
  ('doc', 'bg', '003', 3);

insert into TORVEX_FOLDERS_GROUPS (fld_type, fld_site, fld_id, groupId)
select 'img', fld_site, fld_id, 0 from TORVEX_IMAGES_FOLDERS a where not exists (
  select 1 from TORVEX_FOLDERS_GROUPS b where b.fld_type = 'img' and b.fld_site = a.fld_site and b.fld_id = a.fld_id);
insert into TORVEX_FOLDERS_GROUPS (fld_type, fld_site, fld_id, groupId)
select 'doc', fld_site, fld_id, 0 from TORVEX_DOCUMENTS_FOLDERS a where not exists (
  select 1 from TORVEX_FOLDERS_GROUPS b where b.fld_type = 'doc' and b.fld_site = a.fld_site and b.fld_id = a.fld_id);

insert into TORVEX_IMAGES (img_site, img_fldId, img_title, img_filename, img_size, img_width, img_height) values
  ('bg', '', 'Alpine garden (drawing)', 'alpine-garden.svg', 43917, 0, 0),
  ('bg', '', 'Map of the garden', 'garden-map.svg', 2454, 0, 0),
  ('bg', '', 'Glasshouse (drawing)', 'glasshouse.svg', 33782, 0, 0),
  ('bg', '', 'Night garden (drawing)', 'night-garden.svg', 23608, 0, 0),
  ('bg', '', 'Palm House (drawing)', 'palm-house.svg', 32877, 0, 0),
  ('bg', '', 'Paper gardens (drawing)', 'paper-gardens.svg', 7325, 0, 0),
  ('bg', '', 'Snowdrops (drawing)', 'snowdrops.svg', 9784, 0, 0),
  ('bg', '001', 'Sketch of the new lily pond', '001/new-pond.svg', 1117, 0, 0),
  ('bg', '002001', 'Glasshouse in the evening', '002/001/glasshouse.jpg', 39591, 900, 675),
  ('bg', '002001', 'Palm House, from the gallery', '002/001/palm-house.jpg', 79593, 900, 540),
  ('bg', '002002', 'Alpine garden in May', '002/002/alpine-garden.jpg', 25873, 900, 540),
  ('bg', '002002', 'Night garden at ten', '002/002/night-garden.jpg', 38879, 900, 540),
  ('bg', '002002', 'Snowdrops between the benches', '002/002/snowdrops.jpg', 36955, 900, 540),
  ('ri', '', 'Herbarium sheet (drawing)', 'herbarium-sheet.svg', 10983, 0, 0),
  ('ri', '', 'Seeds under the lens (drawing)', 'seeds.svg', 20785, 0, 0),
  ('ri', '', 'Line of plots (drawing)', 'transect.svg', 14627, 0, 0),
  ('ri', '001', 'Male fern, 1907', '001/male-fern-1907.jpg', 29189, 540, 600);

insert into TORVEX_DOCUMENTS (doc_site, doc_fldId, doc_title, doc_filename, doc_size, doc_type) values
  ('bg', '', 'List of the old trees', 'old-trees.csv', 526, 'csv'),
  ('bg', '001', 'Friends’ letter', '001/friends-letter.txt', 502, 'txt'),
  ('bg', '001', 'Freundesbrief', '001/freundesbrief.txt', 500, 'txt'),
  ('bg', '002', 'Map of the garden to print', '002/garden-map.pdf', 9698, 'pdf'),
  ('bg', '002001', 'Twelve riddles', '002/001/riddles.pdf', 21264, 'pdf'),
  ('bg', '002001', 'Zwölf Rätsel', '002/001/raetsel.pdf', 24190, 'pdf'),
  ('bg', '003', 'Rota', '003/rota.csv', 265, 'csv'),
  ('bg', '003', 'Dienstplan', '003/dienstplan.csv', 289, 'csv'),
  ('bg', '003', 'Rules of the tool shed', '003/tool-shed.txt', 494, 'txt'),
  ('bg', '004', 'Notices', '004/notices.html', 397, 'html'),
  ('bg', '004', 'Aushang', '004/aushang.html', 427, 'html'),
  ('ri', '', 'Loan conditions', 'loan-conditions.txt', 672, 'txt'),
  ('ri', '', 'Leihbedingungen', 'leihbedingungen.txt', 805, 'txt'),
  ('ri', '', 'Survey plots 1998 to 2025', 'transect-1998-2025.csv', 173, 'csv'),
  ('ri', '001', 'Germination 2000 to 2025', '001/germination-2000-2025.csv', 245, 'csv'),
  ('ri', '001', 'First snowdrops 1981 to 2021', '001/first-snowdrops-1981-2021.csv', 195, 'csv'),
  ('ri', '001001', 'How the plots are counted', '001/001/plots-method.txt', 637, 'txt'),
  ('ri', '001001', 'Wie auf den Flächen gezählt wird', '001/001/flaechen-methode.txt', 718, 'txt'),
  ('ri', '002', 'Seed list', '002/seeds.xml', 1098, 'xml'),
  ('ri', '002', 'Layout of the seed list', '002/seeds.xsl', 2427, 'xsl');
