#include "platform/db/ConnectionText.h"

#include "platform/text/Text.h"

namespace torvex::db {

namespace {

constexpr std::string_view sqlitePrefix = "sqlite:";

}  // namespace

Engine engineOf(std::string_view connectionText) {
    if (text::startsWith(connectionText, sqlitePrefix) && connectionText.size() > sqlitePrefix.size()) {
        return Engine::Sqlite;
    }
    const bool address =
        text::startsWith(connectionText, "postgresql://") || text::startsWith(connectionText, "postgres://");
    // libpq's own form is a list of "name=value".
    if (address || connectionText.find('=') != std::string_view::npos) return Engine::PostgreSql;
    throw DatabaseError(
        "the connection text names no database: it is neither \"sqlite:FOLDER\" nor \"postgresql://...\" nor "
        "\"host=... dbname=...\"");
}

std::string storeFolder(std::string_view connectionText) {
    return std::string(connectionText.substr(sqlitePrefix.size()));
}

}  // namespace torvex::db
