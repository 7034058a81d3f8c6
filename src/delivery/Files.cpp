// cServer: guarded files.

#include <array>
#include <utility>

#include "delivery/Access.h"
#include "delivery/FolderAccess.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

namespace torvex {

namespace {

constexpr std::string_view fileSent = "0";
constexpr std::string_view fileNotFound = "-99";
constexpr std::string_view secureAddressNeeded = "-10";

constexpr std::string_view selectFolderGroups =
    "select groupId from TORVEX_FOLDERS_GROUPS where fld_type = ? and fld_site = ? and fld_id = ? "
    "order by groupId";
constexpr std::string_view selectUserOfFolder =
    "select a.validFrom, a.validTo from TORVEX_USERS a "
    "inner join TORVEX_GROUPS_USERS b on a.userId = b.userId "
    "inner join TORVEX_FOLDERS_GROUPS c on b.groupId = c.groupId "
    "where a.username = ? and a.password = ? and c.fld_type = ? and c.fld_site = ? and c.fld_id = ?";
constexpr std::string_view selectMimeType = "select MimeType from TORVEX_MIMETYPES where filetype = ?";

constexpr std::size_t siteLength = 2;
constexpr std::size_t folderLevelLength = 3;

/// A media folder as the group lists know it.
struct MediaFolder {
    std::string_view type;  ///< "img" or "doc"
    std::string site;
    std::string id;
};

int folderVerdict(db::Connection& connection, MediaFolder folder, const Visitor& visitor,
                  std::string_view today) {
    double group = inheritedGroup;
    while (true) {
        auto rows = connection.query(selectFolderGroups, {folder.type, folder.site, folder.id});
        if (!rows.next()) return folderAccess::noGroups;
        group = rows.number("groupId");
        if (group != inheritedGroup || folder.id.size() < folderLevelLength) break;
        folder.id.resize(folder.id.size() - folderLevelLength);
    }
    if (group <= everybodyGroup) return folderAccess::open;
    if (visitor.username.empty() && visitor.password.empty()) return folderAccess::noLogin;
    auto user = connection.query(selectUserOfFolder,
                                 {visitor.username, visitor.password, folder.type, folder.site, folder.id});
    const bool isValid = user.next() && isWithin(today, user.text("validFrom"), user.text("validTo"));
    return isValid ? folderAccess::member : folderAccess::noLogin;
}

std::string mimeType(db::Connection& connection, const std::string& extension) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 7> common = {{
        {"gif", "image/gif"},
        {"jpg", "image/jpeg"},
        {"jpeg", "image/jpeg"},
        {"bmp", "image/bmp"},
        {"doc", "application/msword"},
        {"xls", "application/vnd.ms-excel"},
        {"pdf", "application/pdf"},
    }};
    for (const auto& [known, type] : common) {
        if (text::equals(known, extension)) return std::string(type);
    }
    auto rows = connection.query(selectMimeType, {extension});
    const std::string type = rows.next() ? rows.text("MimeType") : std::string();
    return type.empty() ? "application/octet-stream" : type;
}

/// The file's bytes; "" when there are none, and when it can't be read.
std::string bytesOf(const FileSystem& files, const std::string& path) {
    try {
        return files.readBytes(path).value_or(std::string());
    } catch (const Error&) {
        return {};
    }
}

/// What lies behind the last divider; the whole text when there is none.
std::string behindLast(const std::string& text, char divider) {
    return text.substr(text.rfind(divider) + 1);
}

}  // namespace

int cServer::checkFolderAccess(const std::string& folder) try {
    const auto& application = host_.application;
    if (!host_.session.text(sessionKey::authorName).empty())
        return folderAccess::open;  // an author sees everything
    const std::string images = application.text(applicationKey::imagesPath);
    const std::string documents = application.text(applicationKey::documentsPath);
    const bool isImage = text::startsWith(folder, images);
    if (!isImage && !text::startsWith(folder, documents)) return folderAccess::open;
    if (!application.isTrue(isImage ? applicationKey::imageSecurity : applicationKey::documentSecurity))
        return folderAccess::open;
    std::string path = folder.substr((isImage ? images : documents).size());
    std::erase(path, '/');
    int code = folderAccess::badPath;
    if (path.size() >= siteLength) {
        code = folderAccess::open;
        if (application.isTrue(applicationKey::isExtranet)) {
            const Visitor visitor{host_.session.text(sessionKey::visitorName),
                                  host_.session.text(sessionKey::visitorPassword)};
            code = folderVerdict(
                connection(), {isImage ? "img" : "doc", path.substr(0, siteLength), path.substr(siteLength)},
                visitor, host_.clock.today());
        }
    }
    return isImage && code < 0 ? folderAccess::blankPicture : code;
} catch (...) {
    raiseFrom("checkFolderAccess !");
}

bool documentNeedsSecureAddress(const HostContext& host, int access) {
    if (!text::equals(host.request.serverVariable("https"), "off")) return false;
    const auto& application = host.application;
    if (!host.session.text(sessionKey::authorName).empty())
        return host.session.isTrue(sessionKey::authoringSsl);
    return application.isTrue(applicationKey::websiteSsl) ||
           (access == folderAccess::member && application.isTrue(applicationKey::extranetSsl));
}

std::string cServer::sendBinaryFile(const std::string& fileSpec, bool securityCheck) try {
    std::string path = text::replaceAll(text::trim(fileSpec), "\\", "/");
    std::string filename = behindLast(path, '/');
    const std::string folder = path.substr(0, path.size() - filename.size());
    if (folder.empty() || filename.empty()) return std::string(fileNotFound);
    if (securityCheck) {
        const int access = checkFolderAccess(folder);
        if (access < 0) return std::to_string(access);
        if (access == folderAccess::blankPicture) {
            filename = "spacer.gif";
            path = host_.application.text(applicationKey::installPath) + "wwwroot/torvex/images/" + filename;
        } else if (text::startsWith(folder, host_.application.text(applicationKey::documentsPath)) &&
                   documentNeedsSecureAddress(host_, access)) {
            return std::string(secureAddressNeeded);
        }
    }
    const std::string type = mimeType(connection(), behindLast(filename, '.'));
    const std::string bytes = bytesOf(host_.files, path);
    if (bytes.empty()) return std::string(fileNotFound);
    host_.response.contentType = type;
    host_.response.addHeader("Content-Disposition", "inline; filename=" + filename);
    host_.response.binaryWrite(bytes);
    return std::string(fileSent);
} catch (...) {
    raiseFrom("SendBinaryFile !");
}

}  // namespace torvex
