#pragma once

#include "installation/Installation.h"
#include "installation/Undo.h"

namespace torvex {
class Clock;
}

namespace torvex {

/// Throws `Error` when the installation's database holds something already, or can't be reached.
void refuseTakenDatabase(const Installation& installation, db::Database& database);

/// Makes the tables, without rows, in a database that isn't taken. `undo` gets what takes them back.
void makeDatabaseTables(const Installation& installation, db::Database& database, const Clock& clock,
                        Undo& undo);

}  // namespace torvex
