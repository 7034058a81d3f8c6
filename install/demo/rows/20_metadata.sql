-- The meta tags that every site has.

insert into TORVEX_METADATA
  (metaData_id, metaData_site, metaData_name, metaData_description, lock)
values
  (1, 'bg', 'author', 'Author', 0),
  (2, 'bg', 'comments', 'Comments', 0),
  (3, 'bg', 'company', 'Company', 0),
  (4, 'bg', 'keywords', 'The html keywords', 0),
  (5, 'bg', 'subject', 'The html subject', 0),
  (6, 'bg', 'description', 'The html description', 0),
  (7, 'ri', 'author', 'Author', 0),
  (8, 'ri', 'comments', 'Comments', 0),
  (9, 'ri', 'company', 'Company', 0),
  (10, 'ri', 'keywords', 'The html keywords', 0),
  (11, 'ri', 'subject', 'The html subject', 0),
  (12, 'ri', 'description', 'The html description', 0);
