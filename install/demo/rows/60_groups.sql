-- Who may read. Group 0 asks the parent, group 1 is everybody, the others need a login.

insert into TORVEX_USERGROUPS
  (groupId, name, description, entryPage, exitPage, lock)
values
  (2, 'Friends', 'Friends of the garden', 41, 45, ''),
  (3, 'Volunteers', 'Those who help in the beds', 42, 45, ''),
  (4, 'Freunde', 'Freundeskreis, deutsch', 141, 145, '');

-- Without a password: init gives each of them one of their own and shows it.
insert into TORVEX_USERS
  (userId, username, password, firstname, lastname, validFrom, validTo, lock)
values
  (1, 'flora', '', 'Flora', 'Maas', '', '', ''),
  (2, 'rowan', '', 'Rowan', 'Teller', '20250101', '', ''),
  (3, 'linde', '', 'Linde', 'Brandt', '', '', ''),
  (4, 'hazel', '', 'Hazel', 'Quint', '20240101', '20241231', '');

-- Rowan is a friend and a volunteer; Hazel's card has run out.
insert into TORVEX_GROUPS_USERS (groupId, userId) values
  (2, 1), (2, 2), (3, 2), (4, 3), (2, 4);

-- The roots are open to everybody. All else asks its parent (89_inherited.sql), but for the pages named below.
insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId)
select pageId, 1 from TORVEX_PAGES_DESIGN where parent = '';

insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId) values
  (41, 2), (41, 3), (42, 3), (141, 4), (142, 3);
