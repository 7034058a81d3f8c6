#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// What another newsflash of a website has already.
enum class NewsflashTaken { Nothing, Number, Title };

/// `nfId` is the key of the one that asks, which may keep what is its own; 0 for one that is new.
NewsflashTaken takenOfNewsflash(db::Connection& connection, std::string_view site, std::string_view lang,
                                int nfId, int number, std::string_view title);

}  // namespace torvex
