-- What other servers have missed of the files of the installation: one row for a file or folder, until it gets there.
-- Beside the trail, as a row is written whatever becomes of the content.

create table TORVEX_SERVERS_MISSED (
  missedId {identity},
  serverName {text} not null,
  path {text} not null,
  task {text},
  reason {text},
  moment {date}
);

create index idx_torvex_servers_missed_servername_path on TORVEX_SERVERS_MISSED (serverName, path);
