#include "delivery/FolderAccess.h"
#include "delivery/cServer.h"
#include "pages/Routes.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// The path of an address below the public folder, as the folder check knows it.
std::string folderOf(const HostContext& host, std::string_view address) {
    const std::string_view folder = address.substr(1, address.rfind('/'));
    return host.application.text(applicationKey::rootPath) + std::string(folder);
}

void sendBlankPicture(HostContext& host, cServer& server) {
    host.response.cacheControl = "no-store";
    server.sendBinaryFile(host.application.text(applicationKey::rootPath) + "torvex/images/spacer.gif",
                          false);
}

/// A decoded path as it stands in an address.
std::string encodedPath(std::string_view path) {
    std::string encoded;
    for (const char c : path) {
        const bool stays = std::string_view("/-._~").find(c) != std::string_view::npos;
        if (stays) {
            encoded += c;
        } else {
            encoded += c == ' ' ? "%20" : text::urlEncode(std::string_view(&c, 1));
        }
    }
    return encoded;
}

/// Sends the visitor to the document's secure address, if it needs one.
bool isMovedToSecureAddress(HostContext& host, std::string_view address, int access) {
    if (!text::startsWith(address, host.application.text(applicationKey::documentsUrl))) return false;
    if (!documentNeedsSecureAddress(host, access)) return false;
    host.response.redirect("https://" + host.request.serverVariable("http_host") + encodedPath(address));
    return true;
}

bool mayRead(HostContext& host, std::string_view address) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    cServer server(host);
    server.connect(*connection);
    const int access = server.checkFolderAccess(folderOf(host, address));
    if (access == folderAccess::blankPicture) sendBlankPicture(host, server);
    if (access < 0) host.response.redirect("/error.asp?error=no_login");
    if (access >= 0 && isMovedToSecureAddress(host, address, access)) return false;
    return access >= 0 && access != folderAccess::blankPicture;
}

}  // namespace

std::vector<FileGuard> mediaGuards(const ApplicationValues& application) {
    return {
        {application.text(applicationKey::imagesUrl),
         [&application] { return application.isTrue(applicationKey::imageSecurity); }, mayRead},
        {application.text(applicationKey::documentsUrl),
         [&application] {
             return application.isTrue(applicationKey::documentSecurity) ||
                    application.isTrue(applicationKey::websiteSsl);
         },
         mayRead},
    };
}

}  // namespace torvex
