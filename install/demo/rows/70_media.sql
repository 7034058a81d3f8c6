-- Media folders and who may read them; documents that have a title. A folder's number has three characters
-- a level; the site's own folder has none.

insert into TORVEX_IMAGES_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) values
  ('bg', '001', 'For friends', 1, '');
insert into TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) values
  ('bg', '001', 'For friends', 1, '');

insert into TORVEX_FOLDERS_GROUPS (fld_type, fld_site, fld_id, groupId) values
  ('img', 'bg', '', 1), ('img', 'ri', '', 1), ('doc', 'bg', '', 1), ('doc', 'ri', '', 1),
  ('img', 'bg', '001', 2), ('img', 'bg', '001', 4), ('doc', 'bg', '001', 2), ('doc', 'bg', '001', 4);

insert into TORVEX_DOCUMENTS (doc_site, doc_fldId, doc_title, doc_filename, doc_size, doc_type) values
  ('bg', '', 'List of the old trees', 'old-trees.csv', 0, 'csv'),
  ('bg', '001', 'Friends’ letter', '001/friends-letter.txt', 0, 'txt'),
  ('bg', '001', 'Freundesbrief', '001/freundesbrief.txt', 0, 'txt');
