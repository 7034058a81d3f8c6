#include "records/RegisterLock.h"

#include <string_view>

#include "platform/db/Connection.h"

namespace torvex {

namespace {

/// A row that is always there; only upgrades of the schema write it otherwise.
constexpr std::string_view takeTurns = "update TORVEX_SCHEMA_CONTENT set version = version";

}  // namespace

void lockRegisters(db::Connection& transaction) {
    transaction.execute(takeTurns);
}

}  // namespace torvex
