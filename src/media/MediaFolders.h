#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "media/MediaKind.h"
#include "platform/Value.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// A folder of a site's media. Its id is a text of three digits for each level: "001" is a top folder,
/// "001002" its second child. The empty id is the site's own directory, above the top folders.
struct MediaFolder {
    MediaKind kind;
    std::string site;
    std::string id;
};

inline constexpr std::size_t folderLevelLength = 3;
inline constexpr std::size_t longestFolderId = 250;

/// Whether a text can be a folder's id, or is empty. Anything else would name other directories.
bool isFolderId(std::string_view id);

/// "001/002/" for "001002": each level with a divider behind it.
std::string relativePathOf(std::string_view folderId);
/// Without a divider at its end.
std::string directoryOf(const HostContext& host, const MediaFolder& folder);

/// Whether the register has the folder.
bool folderExists(db::Connection& connection, const MediaFolder& folder);
/// "" when there is none.
std::string folderName(db::Connection& connection, const MediaFolder& folder);

/// The id of a new folder below `parent`: the lowest number that is free, "" when all 999 are taken or the id
/// would be too long.
std::string freeFolderId(db::Connection& connection, const MediaFolder& parent);
/// The id of the folder of this name below `parent`, "" when there is none.
std::string namesake(db::Connection& connection, const MediaFolder& parent, std::string_view name);

/// Enters the folder as "New folder", which inherits its groups. False when somebody else has just taken its
/// number; nothing is entered then. For a transaction.
bool enterFolder(db::Connection& transaction, const MediaFolder& folder);
/// Removes the folder, all below it, their files' rows and groups. For a transaction.
void removeFolderRows(db::Connection& transaction, const MediaFolder& folder);

/// All groups with number, name, and 1 where the folder itself has the group, else 0.
Value folderGroups(db::Connection& connection, const MediaFolder& folder);
/// Removes the groups of a folder and of all below it.
void removeFolderGroups(db::Connection& transaction, const MediaFolder& folder);
/// Lets a group reach the folder. "Inherited" and "everybody" exclude all others. For a transaction.
void admitGroup(db::Connection& transaction, const MediaFolder& folder, int groupId);
void dismissGroup(db::Connection& transaction, const MediaFolder& folder, int groupId);

}  // namespace torvex
