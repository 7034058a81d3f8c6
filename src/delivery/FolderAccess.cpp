#include "delivery/FolderAccess.h"

#include "accounts/Actor.h"
#include "accounts/SecondFactor.h"
#include "delivery/Access.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

namespace torvex {

namespace {

constexpr std::string_view selectFolderGroups =
    "select groupId from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id = ? "
    "order by groupId";
constexpr std::string_view selectUserOfFolder =
    "select a.validFrom, a.validTo from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on a.userId = b.userId "
    "inner join TORVEX_FOLDERS_GROUPS c on b.groupId = c.groupId "
    "where a.username = ? and a.password = ? and c.fld_type = ? and c.fld_site = ? and c.fld_id = ?";

constexpr std::size_t siteLength = 2;
constexpr std::size_t folderLevelLength = 3;

}  // namespace

bool GuardedFolder::goUp() {
    if (id.size() < folderLevelLength) return false;
    id.resize(id.size() - folderLevelLength);
    return true;
}

bool seesAllFolders(const HostContext& host, db::Connection& connection) {
    return !host.session.text(sessionKey::authorName).empty() && !mustEnrol(connection, actorOf(host));
}

std::variant<int, GuardedFolder> guardedFolder(const HostContext& host, const std::string& folder) {
    const auto& application = host.application;
    const std::string images = application.text(applicationKey::imagesPath);
    const std::string documents = application.text(applicationKey::documentsPath);
    const bool isImage = text::startsWith(folder, images);
    if (!isImage && !text::startsWith(folder, documents)) return folderAccess::open;
    if (!application.isTrue(isImage ? applicationKey::imageSecurity : applicationKey::documentSecurity))
        return folderAccess::open;
    std::string path = folder.substr((isImage ? images : documents).size());
    std::erase(path, '/');
    if (path.size() < siteLength) return isImage ? folderAccess::blankPicture : folderAccess::badPath;
    if (!hasExtranet(host)) return folderAccess::open;
    return GuardedFolder{isImage ? "img" : "doc", path.substr(0, siteLength), path.substr(siteLength)};
}

int folderVerdict(db::Connection& connection, GuardedFolder folder, const Visitor& visitor,
                  std::string_view today) {
    double group = inheritedGroup;
    do {
        auto rows = connection.query(selectFolderGroups, {folder.type, folder.site, folder.id});
        if (!rows.next()) return folderAccess::noGroups;
        group = rows.number("groupId");
    } while (group == inheritedGroup && folder.goUp());
    if (group <= everybodyGroup) return folderAccess::open;
    if (visitor.username.empty() && visitor.password.empty()) return folderAccess::noLogin;
    auto user = connection.query(selectUserOfFolder,
                                 {visitor.username, visitor.password, folder.type, folder.site, folder.id});
    const bool isValid = user.next() && isWithin(today, user.text("validFrom"), user.text("validTo"));
    return isValid ? folderAccess::member : folderAccess::noLogin;
}

bool documentNeedsSecureAddress(const HostContext& host, int access) {
    if (!text::equals(host.request.serverVariable("https"), "off")) return false;
    const auto& application = host.application;
    if (!host.session.text(sessionKey::authorName).empty())
        return host.session.isTrue(sessionKey::authoringSsl);
    return application.isTrue(applicationKey::websiteSsl) ||
           (access == folderAccess::member && application.isTrue(applicationKey::extranetSsl));
}

}  // namespace torvex
