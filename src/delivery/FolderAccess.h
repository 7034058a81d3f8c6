#pragma once

namespace torvex {

struct HostContext;

/// The results of `cServer::checkFolderAccess`.
namespace folderAccess {
inline constexpr int open = 0;
inline constexpr int member = 1;          ///< a user of the folder's group
inline constexpr int noGroups = -1;       ///< no group has the folder
inline constexpr int noLogin = -2;        ///< no valid login
inline constexpr int badPath = -99;       ///< a folder that lies in no site
inline constexpr int blankPicture = 100;  ///< in place of a refusal of an image
}  // namespace folderAccess

/// Whether a document of a folder with this access may only be sent over a secure connection, which the
/// present one isn't.
bool documentNeedsSecureAddress(const HostContext& host, int access);

}  // namespace torvex
