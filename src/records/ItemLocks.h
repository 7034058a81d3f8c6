#pragma once

#include <string>
#include <string_view>

namespace torvex {
class ApplicationValues;
namespace db {
class Connection;
}

/// Who wants an administrative record for itself. It holds what locks know of an `Actor`, which is a type of
/// the accounts: records know nothing of these.
struct LockSeeker {
    std::string_view sessionId;
    int loginId = 0;
};

// The locks that keep two authors out of one administrative record. A lock is the id of the session that
// holds it; it dies with that session, so that one whose session is gone, or belongs to the same login, is
// free to be taken. Each function tests and writes as one step: of two sessions that take a record at once,
// one gets it.
//
// `item` is a word in any case: "application", "baseTemplate", "contentTemplate", "group", "htmlFeed",
// "interface", "language", "login", "metadata", "role", "server", "site", "stylesheet", "user", "xmlFeed".
// `itemId` is the record's key: a number, or a code for "interface", "language" and "site". Blanks around
// both don't count. All throw `DatabaseError`.

/// Whether the seeker now holds the record. False when the session of another login holds it, and for a
/// record or an item that isn't there.
bool takeItem(db::Connection& connection, std::string_view item, std::string_view itemId,
              const LockSeeker& seeker);
/// Does nothing unless the session holds the record. A "language" is taken as such and let go as a site's:
/// its `itemId` here begins with the site and ends with the language.
void releaseItem(db::Connection& connection, std::string_view item, std::string_view itemId,
                 std::string_view sessionId);

/// The session that holds the record; "" when none does, and for a record or an item that isn't there.
std::string holderOfItem(db::Connection& connection, std::string_view item, std::string_view itemId);

/// The item "config", the settings of the installation, whose lock stands among the application's values.
bool takeConfiguration(db::Connection& connection, ApplicationValues& application, const LockSeeker& seeker);
void releaseConfiguration(ApplicationValues& application, std::string_view sessionId);

}  // namespace torvex
