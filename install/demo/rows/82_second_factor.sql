-- The second factor of visitors: a page in each language of the garden, where there are logins. The setting
-- torvex_extranet_secondFactor says whether there are any: as long as not, nothing leads to these pages, which lie below
-- those to log in by.

insert into TORVEX_APPLICATIONS
  (app_id, app_name, app_description, app_href_public, app_href_admin, app_param_public, app_system, lock)
values
  (391, 'Second factor', 'Visitors show and keep their second factor', '/torvex_secondFactor/', '', '', 1, '');

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock)
values
  (391, 'bg', 'en', 'Second factor', 'The forms of the second factor', 'second-factor.html', 0, 0),
  (392, 'bg', 'de', 'Second factor', 'The forms of the second factor', 'second-factor.html', 0, 0);

insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (391, 'bg.en.08.03.01', 1, 'bg', 'en', 'bg.en.08.03', 'A', 'Second factor', 391, 0, 0, 391, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (392, 'bg.de.06.03.01', 1, 'bg', 'de', 'bg.de.06.03', 'A', 'Zweiter Faktor', 392, 0, 0, 391, '', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0);

insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
  (391, 1, 1, 0, 'Second factor'),
  (392, 1, 1, 0, 'Zweiter Faktor');
