#pragma once

#include <string_view>

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

/// Whether the actor may read what isn't live yet of a site and language: who works there, in pages or in the
/// administration. Any edit right in the tree counts, under whatever scope, and any access to an entry of the
/// menu that is by site, in this one; an entry for the whole installation doesn't. The administrator may.
bool mayReadDesign(db::Connection& connection, const Actor& actor, std::string_view site,
                   std::string_view lang);

/// The same for all trees that there are.
bool mayReadEachDesign(db::Connection& connection, const Actor& actor);

}  // namespace torvex
