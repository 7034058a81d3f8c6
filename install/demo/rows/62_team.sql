-- Who works on the websites. The password "locked" is the stored form of none: init gives each of these
-- logins one of its own and shows it.

insert into TORVEX_LOGINS
  (loginId, username, password, name, job, email, emailNotification, validFrom, validTo, lock)
values
  (2, 'iris', 'locked', 'Iris Falk', 'Head of the websites', 'iris@lindhaven.example', 0, '', '', ''),
  (3, 'basil', 'locked', 'Basil Crane', 'Curator of the garden', 'basil@lindhaven.example', 0, '', '', ''),
  (4, 'heide', 'locked', 'Heide Lorenz', 'Translator', 'heide@lindhaven.example', 0, '', '', ''),
  (5, 'reed', 'locked', 'Reed Amsel', 'Programme of events', 'reed@lindhaven.example', 0, '', '', ''),
  (6, 'clover', 'locked', 'Clover Dunn', 'Trainee', 'clover@lindhaven.example', 0, '', '', '');

insert into TORVEX_ROLES
  (roleId, roleName, roleDesc, lock)
values
  (1, 'Publishers', 'All steps of a page in all websites; their design, media, modules and visitors', ''),
  (2, 'German desk', 'All steps of a page in German', ''),
  (3, 'Programme', 'Writes and sorts what is on in the garden; publishing is left to others', '');

-- Clover helps at the German desk and with the programme, and may do what either role may.
insert into TORVEX_ROLES_LOGINS (roleId, loginId) values
  (1, 2), (1, 3), (2, 4), (3, 5), (2, 6), (3, 6);

-- A right without a scope holds in the whole tree, otherwise at the named nodes and all below them.
insert into TORVEX_EDIT_RIGHTS
  (roleId, site, lang, onOff, move, edit, approve, publish, scope)
values
  (1, 'bg', 'en', 1, 1, 1, 1, 1, ''),
  (1, 'bg', 'de', 1, 1, 1, 1, 1, ''),
  (1, 'ri', 'en', 1, 1, 1, 1, 1, ''),
  (1, 'ri', 'de', 1, 1, 1, 1, 1, ''),
  (2, 'bg', 'de', 1, 1, 1, 1, 1, ''),
  (2, 'ri', 'de', 1, 1, 1, 1, 1, ''),
  (3, 'bg', 'en', 0, 1, 1, 0, 0, 'bg.en.03');

-- The publishers: groups and users, who is online, the audit trail; media, meta data, and all of a website.
insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess)
select 1, advId, '', '', advView, advEdit from TORVEX_ADVANCED
where advView = 1 and (advLevel > 0 or advId in (23, 31, 32, 63));

-- The German desk: media, and titles, locks, statistics, boards and newsflashes of the German websites.
insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess)
select 2, advId, '', case when advLevel = 2 then 'de' else '' end, advView, advEdit from TORVEX_ADVANCED
where advId in (111, 112, 211, 212, 213, 241, 242);

-- The programme: the garden's media, and its English board and newsflashes.
insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess)
select 3, advId, 'bg', case when advLevel = 2 then 'en' else '' end, advView, advEdit from TORVEX_ADVANCED
where advId in (111, 112, 241, 242);

-- Each begins with the settings that new logins begin with.
insert into TORVEX_SETUP (parameter, value, dataType, loginId)
select a.parameter, a.value, a.dataType, b.loginId from TORVEX_SETUP a, TORVEX_LOGINS b
where a.loginId = 1 and b.loginId > 1;
