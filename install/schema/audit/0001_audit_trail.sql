-- The audit trail lies in a store of its own: a line never waits for, nor rolls back with, a publishing
-- transaction. auditId keeps the order of lines of the same second.

create table TORVEX_AUDIT_TRAIL (
  auditId {identity},
  loginId {number},
  loginName {text},
  pageId {number} default 0,
  pageTitle {text},
  nodeId {text},
  advId {number} default 0,
  action {text},
  description {text},
  Date {text},
  time {text}
);

create index idx_torvex_audit_trail_date_time on TORVEX_AUDIT_TRAIL (Date, time);
create index idx_torvex_audit_trail_loginid_date on TORVEX_AUDIT_TRAIL (loginId, Date);
create index idx_torvex_audit_trail_pageid_date on TORVEX_AUDIT_TRAIL (pageId, Date);
create index idx_torvex_audit_trail_nodeid_date on TORVEX_AUDIT_TRAIL (nodeId, Date);
create index idx_torvex_audit_trail_advid_date on TORVEX_AUDIT_TRAIL (advId, Date);
