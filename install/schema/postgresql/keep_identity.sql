-- After the steps and before any row: a row that brings its own key must not collide with a key that the
-- database hands out later. Sent as one text, not split at semicolons. May run again after every upgrade:
-- it covers every identity column there is then, and brings a sequence that lags behind its table forward.
--
-- A handed-out key is never above its sequence, so the trigger's condition skips such rows without calling
-- the function. A sequence is only ever moved forward. Over a short way nextval does it, which can't move it
-- back whatever others do meanwhile. Over a long way setval does it in one step, so that no other session is
-- handed the wanted key on the way. One session does so at a time, and only while the way is still long.

create or replace function torvex_keep_identity() returns trigger language plpgsql as $body$
declare
  sequence_name regclass := tg_argv[0]::regclass;
  lock_class constant integer := 'pg_sequence'::regclass::oid::integer;
  wanted bigint;
  missing bigint;
begin
  execute format('select ($1).%I', tg_argv[1]) into wanted using new;
  loop
    missing := wanted - coalesce(pg_sequence_last_value(sequence_name), 0);
    exit when missing <= 0;
    if missing <= 100 then
      perform nextval(sequence_name);
    else
      perform pg_advisory_lock(lock_class, sequence_name::oid::bigint::bit(32)::integer);
      begin
        perform setval(sequence_name, wanted)
        where wanted - coalesce(pg_sequence_last_value(sequence_name), 0) > 100;
      exception when others then
        perform pg_advisory_unlock(lock_class, sequence_name::oid::bigint::bit(32)::integer);
        raise;
      end;
      perform pg_advisory_unlock(lock_class, sequence_name::oid::bigint::bit(32)::integer);
    end if;
  end loop;
  return new;
end
$body$;

do $body$
declare
  key record;
  highest bigint;
begin
  for key in
    select c.oid::regclass as table_name, a.attname as column_name,
           pg_get_serial_sequence(c.oid::regclass::text, a.attname)::regclass as sequence_name
    from pg_class c
    join pg_attribute a on a.attrelid = c.oid and a.attidentity <> '' and not a.attisdropped
    where c.relnamespace = current_schema()::regnamespace
      and c.relkind = 'r' and starts_with(c.relname, 'torvex_')
  loop
    execute format(
      'create or replace trigger torvex_keep_identity before insert on %s for each row'
      ' when (new.%I > coalesce(pg_sequence_last_value(%L::regclass), 0))'
      ' execute function torvex_keep_identity(%L, %L)',
      key.table_name, key.column_name, key.sequence_name, key.sequence_name, key.column_name);

    execute format('select max(%I) from %s', key.column_name, key.table_name) into highest;
    if highest > coalesce(pg_sequence_last_value(key.sequence_name), 0) then
      perform setval(key.sequence_name, highest);
    end if;
  end loop;
end
$body$;
