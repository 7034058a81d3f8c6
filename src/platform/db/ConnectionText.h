#pragma once

#include <string>
#include <string_view>

#include "platform/db/Connection.h"

namespace torvex::db {

/// Which engine a connection text names. Throws `DatabaseError`, without the text, when it names none.
Engine engineOf(std::string_view connectionText);

/// The folder of a text that names the embedded store.
std::string storeFolder(std::string_view connectionText);

}  // namespace torvex::db
