// Schema: what the words in braces of its steps mean to each engine.

#include <array>
#include <fmt/format.h>

#include "installation/Schema.h"
#include "platform/db/Connection.h"
#include "platform/db/TableStates.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

struct Word {
    std::string_view word;
    std::string_view sqlite;
    std::string_view postgres;
};

/// The two engines have no index of words in common. On SQLite it is a table of its own, which follows the rows
/// of the one that it indexes.
constexpr std::string_view wordsIndexSqlite = R"sql(
create virtual table TORVEX_PAGE_WORDS_INDEX using fts5 (words, content = 'TORVEX_PAGE_WORDS', content_rowid = 'pageId',
  tokenize = 'ascii', detail = none, prefix = '2 3 4');
create trigger torvex_page_words_insert after insert on TORVEX_PAGE_WORDS begin
  insert into TORVEX_PAGE_WORDS_INDEX (rowid, words) values (new.pageId, new.words);
end;
create trigger torvex_page_words_delete after delete on TORVEX_PAGE_WORDS begin
  insert into TORVEX_PAGE_WORDS_INDEX (TORVEX_PAGE_WORDS_INDEX, rowid, words) values ('delete', old.pageId, old.words);
end;
create trigger torvex_page_words_update after update on TORVEX_PAGE_WORDS begin
  insert into TORVEX_PAGE_WORDS_INDEX (TORVEX_PAGE_WORDS_INDEX, rowid, words) values ('delete', old.pageId, old.words);
  insert into TORVEX_PAGE_WORDS_INDEX (rowid, words) values (new.pageId, new.words);
end;
)sql";
constexpr std::string_view wordsIndexPostgres =
    "create index idx_torvex_page_words_words on TORVEX_PAGE_WORDS "
    "using gin (array_to_tsvector(string_to_array(cast(words as text), ' ')));";

/// What is missing: a link adds it, a row of what it leads to takes it out, and without that row it is back. Those
/// who take a row away don't see the links that others write meanwhile, so they don't ask for any.
constexpr std::string_view missingTargetsSqlite = R"sql(
create trigger torvex_links_missing_page after insert on TORVEX_LINKS
when new.linkPage > 0 and new.linkTwin = 'D'
  and not (exists (select 1 from TORVEX_PAGES_LIVE where pageId = new.linkPage)
    and exists (select 1 from TORVEX_PAGES_DESIGN where pageId = new.linkPage)) begin
  insert or ignore into TORVEX_MISSING_PAGES (linkPage) values (new.linkPage);
end;
create trigger torvex_pages_live_there after insert on TORVEX_PAGES_LIVE begin
  delete from TORVEX_MISSING_PAGES where linkPage = new.pageId
    and exists (select 1 from TORVEX_PAGES_DESIGN where pageId = new.pageId);
end;
create trigger torvex_pages_design_there after insert on TORVEX_PAGES_DESIGN begin
  delete from TORVEX_MISSING_PAGES where linkPage = new.pageId
    and exists (select 1 from TORVEX_PAGES_LIVE where pageId = new.pageId);
end;
create trigger torvex_pages_live_missing after delete on TORVEX_PAGES_LIVE begin
  insert or ignore into TORVEX_MISSING_PAGES (linkPage) values (old.pageId);
end;
create trigger torvex_pages_design_missing after delete on TORVEX_PAGES_DESIGN begin
  insert or ignore into TORVEX_MISSING_PAGES (linkPage) values (old.pageId);
end;
create trigger torvex_links_missing_image after insert on TORVEX_LINKS
when new.linkKind = 'image' and new.linkTwin = 'D'
  and not exists (select 1 from TORVEX_IMAGES where img_site = new.linkSite and img_filename = new.linkTarget) begin
  insert or ignore into TORVEX_MISSING_IMAGES (linkSite, linkTarget) values (new.linkSite, new.linkTarget);
end;
create trigger torvex_images_there after insert on TORVEX_IMAGES begin
  delete from TORVEX_MISSING_IMAGES where linkSite = new.img_site and linkTarget = new.img_filename;
end;
create trigger torvex_images_missing after delete on TORVEX_IMAGES
when old.img_site is not null and old.img_filename is not null begin
  insert or ignore into TORVEX_MISSING_IMAGES (linkSite, linkTarget) values (old.img_site, old.img_filename);
end;
create trigger torvex_images_renamed after update of img_site, img_filename on TORVEX_IMAGES begin
  insert or ignore into TORVEX_MISSING_IMAGES (linkSite, linkTarget)
    select old.img_site, old.img_filename where old.img_site is not null and old.img_filename is not null;
  delete from TORVEX_MISSING_IMAGES where linkSite = new.img_site and linkTarget = new.img_filename;
end;
)sql";
/// Triggers of one event run in the order of their names.
constexpr std::string_view missingTargetsPostgres = R"sql(
create function torvex_link_added() returns trigger language plpgsql as $body$
begin
  if new.linkPage > 0 and not (exists (select 1 from TORVEX_PAGES_LIVE where pageId = new.linkPage)
    and exists (select 1 from TORVEX_PAGES_DESIGN where pageId = new.linkPage)) then
    insert into TORVEX_MISSING_PAGES (linkPage) values (new.linkPage) on conflict do nothing;
  end if;
  if new.linkKind = 'image' and not exists
    (select 1 from TORVEX_IMAGES where img_site = new.linkSite and img_filename = new.linkTarget) then
    insert into TORVEX_MISSING_IMAGES (linkSite, linkTarget) values (new.linkSite, new.linkTarget)
      on conflict do nothing;
  end if;
  return null;
end
$body$;
create trigger torvex_links_missing after insert on TORVEX_LINKS for each row when (new.linkTwin = 'D')
  execute function torvex_link_added();

create function torvex_page_there() returns trigger language plpgsql as $body$
begin
  delete from TORVEX_MISSING_PAGES where linkPage = new.pageId
    and exists (select 1 from TORVEX_PAGES_LIVE where pageId = new.pageId)
    and exists (select 1 from TORVEX_PAGES_DESIGN where pageId = new.pageId);
  return null;
end
$body$;
create trigger torvex_pages_live_there after insert on TORVEX_PAGES_LIVE for each row
  execute function torvex_page_there();
create trigger torvex_pages_design_there after insert on TORVEX_PAGES_DESIGN for each row
  execute function torvex_page_there();

create function torvex_page_missing() returns trigger language plpgsql as $body$
begin
  insert into TORVEX_MISSING_PAGES (linkPage) values (old.pageId) on conflict do nothing;
  return null;
end
$body$;
create trigger torvex_pages_live_missing after delete on TORVEX_PAGES_LIVE for each row
  execute function torvex_page_missing();
create trigger torvex_pages_design_missing after delete on TORVEX_PAGES_DESIGN for each row
  execute function torvex_page_missing();

create function torvex_image_there() returns trigger language plpgsql as $body$
begin
  delete from TORVEX_MISSING_IMAGES where linkSite = new.img_site and linkTarget = new.img_filename;
  return null;
end
$body$;
create trigger torvex_images_there after insert or update of img_site, img_filename on TORVEX_IMAGES for each row
  execute function torvex_image_there();

create function torvex_image_missing() returns trigger language plpgsql as $body$
begin
  if old.img_site is not null and old.img_filename is not null then
    insert into TORVEX_MISSING_IMAGES (linkSite, linkTarget) values (old.img_site, old.img_filename)
      on conflict do nothing;
  end if;
  return null;
end
$body$;
create trigger torvex_images_missing after delete or update of img_site, img_filename on TORVEX_IMAGES for each row
  execute function torvex_image_missing();
)sql";

/// Whoever writes hits, their months follow. What counts of a row is the difference.
constexpr std::string_view monthsSqlite = R"sql(
create trigger torvex_logging_counted after insert on TORVEX_LOGGING begin
  insert into TORVEX_LOGGING_MONTHS (site, lang, nodeId, yyyymm, hits, uniquehits)
    values (new.site, new.lang, new.nodeId, substr(new.yyyymmdd, 1, 6), coalesce(new.hits, 0),
      coalesce(new.uniquehits, 0))
    on conflict (nodeId, yyyymm) do update set hits = hits + excluded.hits, uniquehits = uniquehits + excluded.uniquehits;
end;
create trigger torvex_logging_taken after delete on TORVEX_LOGGING begin
  update TORVEX_LOGGING_MONTHS set hits = hits - coalesce(old.hits, 0),
    uniquehits = uniquehits - coalesce(old.uniquehits, 0)
    where nodeId = old.nodeId and yyyymm = substr(old.yyyymmdd, 1, 6);
end;
create trigger torvex_logging_changed after update of nodeId, yyyymmdd, hits, uniquehits on TORVEX_LOGGING begin
  update TORVEX_LOGGING_MONTHS set hits = hits - coalesce(old.hits, 0),
    uniquehits = uniquehits - coalesce(old.uniquehits, 0)
    where nodeId = old.nodeId and yyyymm = substr(old.yyyymmdd, 1, 6);
  insert into TORVEX_LOGGING_MONTHS (site, lang, nodeId, yyyymm, hits, uniquehits)
    values (new.site, new.lang, new.nodeId, substr(new.yyyymmdd, 1, 6), coalesce(new.hits, 0),
      coalesce(new.uniquehits, 0))
    on conflict (nodeId, yyyymm) do update set hits = hits + excluded.hits, uniquehits = uniquehits + excluded.uniquehits;
end;
)sql";
/// A branch that moves takes all of its rows in one statement, so the months are added up for each statement.
constexpr std::string_view monthsPostgres = R"sql(
create function torvex_hits_changed() returns trigger language plpgsql as $body$
begin
  if tg_op <> 'INSERT' then
    update TORVEX_LOGGING_MONTHS m set hits = m.hits - o.hits, uniquehits = m.uniquehits - o.uniquehits
      from (select nodeId, cast(substr(yyyymmdd, 1, 6) as citext) as yyyymm, sum(coalesce(hits, 0)) as hits,
        sum(coalesce(uniquehits, 0)) as uniquehits from before_rows group by 1, 2) o
      where m.nodeId = o.nodeId and m.yyyymm = o.yyyymm;
  end if;
  if tg_op <> 'DELETE' then
    insert into TORVEX_LOGGING_MONTHS (site, lang, nodeId, yyyymm, hits, uniquehits)
      select min(site), min(lang), nodeId, cast(substr(yyyymmdd, 1, 6) as citext) as yyyymm, sum(coalesce(hits, 0)),
        sum(coalesce(uniquehits, 0)) from after_rows group by 3, 4 order by 3, 4
      on conflict (nodeId, yyyymm) do update set hits = TORVEX_LOGGING_MONTHS.hits + excluded.hits,
        uniquehits = TORVEX_LOGGING_MONTHS.uniquehits + excluded.uniquehits;
  end if;
  return null;
end
$body$;
create trigger torvex_logging_counted after insert on TORVEX_LOGGING referencing new table as after_rows
  for each statement execute function torvex_hits_changed();
create trigger torvex_logging_taken after delete on TORVEX_LOGGING referencing old table as before_rows
  for each statement execute function torvex_hits_changed();
create trigger torvex_logging_changed after update on TORVEX_LOGGING
  referencing old table as before_rows new table as after_rows
  for each statement execute function torvex_hits_changed();
)sql";

constexpr std::array<Word, 8> words = {{
    {"{identity}", "integer primary key autoincrement",
     "bigint generated by default as identity primary key"},
    {"{number}", "integer", "bigint"},
    {"{flag}", "integer", "bigint"},
    {"{text}", "text collate torvex", "citext collate torvex"},
    {"{date}", "timestamp", "timestamp(0)"},
    {"{index of TORVEX_PAGE_WORDS}", wordsIndexSqlite, wordsIndexPostgres},
    {"{upkeep of TORVEX_MISSING_PAGES and TORVEX_MISSING_IMAGES}", missingTargetsSqlite,
     missingTargetsPostgres},
    {"{upkeep of TORVEX_LOGGING_MONTHS}", monthsSqlite, monthsPostgres},
}};

/// What visitors' pages are made of.
constexpr std::array<std::string_view, 37> countedTables = {
    "TORVEX_APPLICATIONS",
    "TORVEX_BASETEMPLATES",
    "TORVEX_BODIES_LIVE",
    "TORVEX_CHARSETS",
    "TORVEX_DOCUMENTS",
    "TORVEX_DOCUMENTS_FOLDERS",
    "TORVEX_DYNMENU_LIVE",
    "TORVEX_FEEDS_HTML",
    "TORVEX_FEEDS_XML",
    "TORVEX_FOLDERS_GROUPS",
    "TORVEX_FORUM_LIVE",
    "TORVEX_FORUM_REACTIONS",
    "TORVEX_FORUM_TOPICS",
    "TORVEX_GROUPS_USERS",
    "TORVEX_IMAGES",
    "TORVEX_IMAGES_FOLDERS",
    "TORVEX_INTERFACE_LANGUAGES",
    "TORVEX_INTERFACE_VOCAB",
    "TORVEX_LANGUAGES",
    "TORVEX_MAILFORM",
    "TORVEX_MAILFORM_OPTIONS",
    "TORVEX_METADATA",
    "TORVEX_MIMETYPES",
    "TORVEX_MSGB_CATEGORIES_LIVE",
    "TORVEX_MSGB_ITEMS_LIVE",
    "TORVEX_NEWSFLASH_CATEGORIES_LIVE",
    "TORVEX_NEWSFLASH_LIVE",
    "TORVEX_PAGES_GROUPS_LIVE",
    "TORVEX_PAGES_LIVE",
    "TORVEX_PAGES_METADATA_LIVE",
    "TORVEX_SETUP",
    "TORVEX_SITES",
    "TORVEX_SITES_LANGUAGES",
    "TORVEX_STYLESHEETS",
    "TORVEX_TEMPLATES",
    "TORVEX_USERGROUPS",
    "TORVEX_USERS",
};

/// Triggers run in the transaction of the change, so the count is as new as the rows.
std::string countingSqlite(std::string_view table, std::string_view event, std::string_view counted) {
    const std::string_view kind = event.substr(0, event.find(' '));
    return fmt::format(
        "create trigger {}_counts_{} after {} on {} begin update TORVEX_TABLE_CHANGES set changes = changes "
        "+ 1 "
        "where tableName = '{}'; end;\n",
        text::lower(counted == table ? table : "torvex_names"), kind, event, table, counted);
}

std::string changesSqlite() {
    std::string sql;
    const auto count = [&](std::string_view table, std::string_view update, std::string_view counted) {
        sql += fmt::format("insert into TORVEX_TABLE_CHANGES (tableName) values ('{}');\n", counted);
        for (const std::string_view event : {std::string_view("insert"), update, std::string_view("delete")})
            sql += countingSqlite(table, event, counted);
    };
    for (const std::string_view table : countedTables) count(table, "update", table);
    count(db::designs, "update of pageId, nodeId", db::namesOfDesigns);
    return sql;
}

constexpr std::string_view tellChange = R"sql(
create function torvex_table_changed() returns trigger language plpgsql as $body$
begin
  perform pg_notify('torvex_changes', tg_argv[0]);
  return null;
end
$body$;
)sql";

std::string changesPostgres() {
    std::string sql(tellChange);
    const auto tell = [&](std::string_view table, std::string_view name, std::string_view update,
                          std::string_view told) {
        sql += fmt::format("insert into TORVEX_TABLE_CHANGES (tableName) values ('{}');\n", told);
        sql += fmt::format(
            "create trigger {} after insert or {} or delete or truncate on {} for each statement execute "
            "function torvex_table_changed('{}');\n",
            name, update, table, told);
    };
    for (const std::string_view table : countedTables) tell(table, "torvex_changes", "update", table);
    tell(db::designs, "torvex_names_change", "update of pageId, nodeId", db::namesOfDesigns);
    tell(db::designs, "torvex_changes", "update", db::designs);
    return sql;
}

/// Put together when a database is made or brought up to date, which is seldom.
std::string withTableChanges(db::Engine engine, std::string sql) {
    constexpr std::string_view word = "{upkeep of TORVEX_TABLE_CHANGES}";
    if (!text::contains(sql, word)) return sql;
    return text::replaceAll(sql, word, engine == db::Engine::Sqlite ? changesSqlite() : changesPostgres());
}

}  // namespace

std::string Schema::wordsOf(db::Engine engine, std::string_view sql) {
    std::string result(sql);
    for (const Word& word : words) {
        result =
            text::replaceAll(result, word.word, engine == db::Engine::Sqlite ? word.sqlite : word.postgres);
    }
    return withTableChanges(engine, std::move(result));
}

}  // namespace torvex
