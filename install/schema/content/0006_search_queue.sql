-- Files that have changed and that the catalogues of the servers have to look at again.
create table TORVEX_SEARCH_QUEUE (
  queue_id {identity},
  queue_path {text} default '',
  queue_day {text} default ''
);

create index idx_torvex_search_queue_queue_day on TORVEX_SEARCH_QUEUE (queue_day);
