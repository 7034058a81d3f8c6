-- The two system groups of visitors: 0 asks the parent, 1 is open to all.
insert into TORVEX_USERGROUPS (groupId, name, description) values
  (0, 'inherited', 'The groups of the parent page or folder'),
  (1, 'everybody', 'Open to every visitor');
