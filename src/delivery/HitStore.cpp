#include "delivery/HitStore.h"

#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/db/Database.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectDay = "select hits from TORVEX_LOGGING where nodeId = ? and yyyymmdd = ?";

constexpr std::string_view addToDay =
    "insert into TORVEX_LOGGING (nodeId, site, lang, yyyy, mm, dd, yyyymmdd, hits, uniquehits) "
    "values (?, ?, ?, ?, ?, ?, ?, ?, ?) "
    "on conflict (nodeId, yyyymmdd) do update set hits = TORVEX_LOGGING.hits + excluded.hits, "
    "uniquehits = TORVEX_LOGGING.uniquehits + excluded.uniquehits";

// One statement, and so no transaction: that would take the write lock of the content as well.
constexpr std::string_view countOne =
    "insert into TORVEX_LOGGING (nodeId, site, lang, yyyy, mm, dd, yyyymmdd, hits, uniquehits) "
    "values (?, ?, ?, ?, ?, ?, ?, 1, 1) "
    "on conflict (nodeId, yyyymmdd) do update set hits = TORVEX_LOGGING.hits + 1, "
    "uniquehits = TORVEX_LOGGING.uniquehits + ? returning hits";

}  // namespace

bool hasHits(db::Connection& connection, std::string_view nodeId, std::string_view day) {
    return connection.query(selectDay, {nodeId, day}).next();
}

void addHits(db::Connection& connection, std::string_view nodeId, std::string_view day, std::int64_t hits,
             std::int64_t uniqueHits) {
    connection.execute(addToDay, {nodeId, siteOf(nodeId), langOf(nodeId), day.substr(0, 4), day.substr(4, 2),
                                  day.substr(6, 2), day, hits, uniqueHits});
}

db::Lease DirectHits::open() {
    return database_.open(application_.text(applicationKey::databaseText),
                          application_.text(applicationKey::databaseUser),
                          application_.text(applicationKey::databasePassword), db::Purpose::Transaction);
}

bool DirectHits::count(std::string_view nodeId, std::string_view day, bool unique) {
    const auto connection = open();
    auto rows = connection->query(countOne, {nodeId, siteOf(nodeId), langOf(nodeId), day.substr(0, 4),
                                             day.substr(4, 2), day.substr(6, 2), day, unique});
    const bool isFirst = rows.next() && rows.number("hits") == 1;
    return unique || isFirst;
}

void DirectHits::countSearch(const SearchedWords& searched) {
    store(searchesOf(searched));
}

void DirectHits::countNothingFound(const SearchedWords& searched) {
    store(emptySearchesOf(searched));
}

void DirectHits::store(const SearchBatch& batch) {
    const auto connection = open();
    db::Transaction transaction(*connection);
    addSearches(*connection, batch);
    transaction.commit();
}

}  // namespace torvex
