#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace torvex {

struct HostContext;
struct Visitor;
namespace db {
class Connection;
}

/// The results of `cServer::checkFolderAccess`.
namespace folderAccess {
inline constexpr int open = 0;
inline constexpr int member = 1;          ///< a user of the folder's group
inline constexpr int noGroups = -1;       ///< no group has the folder
inline constexpr int noLogin = -2;        ///< no valid login
inline constexpr int badPath = -99;       ///< a folder that lies in no site
inline constexpr int blankPicture = 100;  ///< in place of a refusal of an image
}  // namespace folderAccess

/// A media folder as the group lists know it.
struct GuardedFolder {
    std::string_view type;  ///< "img" or "doc"
    std::string site;
    std::string id;

    /// Turns to the folder above; false when the groups of none above count.
    bool goUp();
};

/// Whether the session is an author's, who sees all folders: not while a role of hers demands a second factor that she has
/// still to set up.
bool seesAllFolders(const HostContext& host, db::Connection& connection);

/// What the place of a folder says for who doesn't see all of them: an answer that needs no groups, or the folder whose
/// groups have to be asked.
std::variant<int, GuardedFolder> guardedFolder(const HostContext& host, const std::string& folder);

/// What the groups of the folder say, or of the nearest one above it that has some of its own. `today` is
/// yyyymmdd.
int folderVerdict(db::Connection& connection, GuardedFolder folder, const Visitor& visitor,
                  std::string_view today);

/// Whether a document of a folder with this access may only be sent over a secure connection, which the
/// present one isn't.
bool documentNeedsSecureAddress(const HostContext& host, int access);

}  // namespace torvex
