-- How often each table that visitors' pages are made of has been changed, kept by triggers on whatever changes them: by
-- that a server knows which pages are as they were. The designs count twice: what visitors ask them for is which number
-- a node has, and that changes seldom. On PostgreSQL the triggers tell whoever listens
-- and count nothing: the rows say of which tables.
create table TORVEX_TABLE_CHANGES (
  tableName {text} not null primary key,
  changes {number} not null default 0
);

{upkeep of TORVEX_TABLE_CHANGES}
