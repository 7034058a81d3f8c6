-- One menu for each site and language: two levels everywhere, a third where the visitor is. It shows what needs a login, too,
-- so that friends find their door.

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock)
values
  (366, 'bg', 'en', 'Menu', 'Main menu and menu of the section', 'menu.html', 1, 0),
  (367, 'bg', 'de', 'Menu', 'Main menu and menu of the section', 'menu.html', 1, 0),
  (368, 'ri', 'en', 'Menu', 'Main menu and menu of the section', 'menu.html', 1, 0),
  (369, 'ri', 'de', 'Menu', 'Main menu and menu of the section', 'menu.html', 1, 0);

insert into TORVEX_DYNMENU_DESIGN
  (site, lang, pageId, minLevels, maxLevels, templateId, display, extranet, deleted, modified)
values
  ('bg', 'en', 1, 2, 3, 366, 1, 1, 0, 0),
  ('bg', 'de', 101, 2, 3, 367, 1, 1, 0, 0),
  ('ri', 'en', 201, 2, 3, 368, 1, 1, 0, 0),
  ('ri', 'de', 301, 2, 3, 369, 1, 1, 0, 0);

insert into TORVEX_DYNMENU_LIVE
  (site, lang, pageId, minLevels, maxLevels, templateId, display, extranet, deleted, modified)
select site, lang, pageId, minLevels, maxLevels, templateId, display, extranet, deleted, modified
from TORVEX_DYNMENU_DESIGN;
