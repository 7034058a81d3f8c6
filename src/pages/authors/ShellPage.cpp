#include <fmt/format.h>

#include "accounts/Actor.h"
#include "accounts/Logins.h"
#include "installation/BuiltInterface.h"
#include "pages/NoStore.h"
#include "pages/Token.h"
#include "pages/authors/AuthorsDocument.h"
#include "pages/authors/AuthorsPages.h"
#include "pages/authors/EntryFiles.h"
#include "pages/authors/InterfaceLanguage.h"
#include "pages/authors/Navigation.h"
#include "pages/authors/Notice.h"
#include "pages/authors/Policies.h"
#include "platform/HostContext.h"
#include "platform/Response.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Hexadecimal.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr double noScriptLabel = 4012;
constexpr double notHereLabel = 4918;
constexpr double noInterfaceLabel = 4927;
constexpr double builtWithoutLabel = 4928;

constexpr std::size_t nonceBytes = 16;

std::string headOf(const EntryFiles& files, std::string_view language) {
    std::string head;
    for (const auto& style : files.styles)
        head += fmt::format("<link rel=\"stylesheet\" href=\"{}\">\n", text::htmlEncode(style));
    for (const auto& import : files.imports)
        head += fmt::format("<link rel=\"modulepreload\" href=\"{}\">\n", text::htmlEncode(import));
    head +=
        fmt::format("<link rel=\"preload\" as=\"fetch\" crossorigin href=\"/torvex/api/labels?lang={}\">\n",
                    text::htmlEncode(language));
    return head + fmt::format("<script type=\"module\" src=\"{}\"></script>", text::htmlEncode(files.script));
}

void draw(HostContext& host, db::Connection& connection, const BuiltInterface& interface) {
    AuthorsDocument page(host, connection, presentLanguage(host, connection), "shell.html", {noScriptLabel});
    const std::string nonce = randomName(nonceBytes);
    page.fill("token", pageToken::of(host.session));
    page.fill("nonce", nonce);
    page.fill("noscript", noScriptLabel);
    page.fillHtml("head", headOf(entryFilesOf(interface), page.language()));
    addShellPolicy(host, nonce);
    host.response.write(page.take());
}

}  // namespace

void shellPage(HostContext& host, const BuiltInterface& interface) {
    forbidStoring(host.response);
    if (!isNavigation(host)) return showNotice(host, {.status = 403, .message = notHereLabel});
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    if (!ownsItsLogin(*connection, actorOf(host))) return leadToDoor(host);
    if (interface.isEmpty())
        return showNotice(
            host, {.status = 503, .title = noInterfaceLabel, .message = builtWithoutLabel, .link = 0});
    draw(host, *connection, interface);
}

}  // namespace torvex
