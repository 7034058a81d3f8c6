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

namespace torvex {

namespace {

constexpr std::string_view fileSent = "0";
constexpr std::string_view fileNotFound = "-99";
constexpr std::string_view secureAddressNeeded = "-10";

constexpr std::string_view selectMimeType = "select MimeType from TORVEX_MIMETYPES where filetype = ?";

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
    if (seesAllFolders(host_, connection())) return folderAccess::open;
    const auto guard = guardedFolder(host_, folder);
    if (const int* code = std::get_if<int>(&guard)) return *code;
    const auto& guarded = std::get<GuardedFolder>(guard);
    const int code = folderVerdict(connection(), guarded, visitorOf(host_), host_.clock.today());
    return text::equals(guarded.type, "img") && code < 0 ? folderAccess::blankPicture : code;
} catch (...) {
    raiseFrom("checkFolderAccess !");
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
