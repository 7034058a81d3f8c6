-- The trail is looked through by what was done, as by who, where and when.
create index idx_torvex_audit_trail_action_date on TORVEX_AUDIT_TRAIL (action, Date);
