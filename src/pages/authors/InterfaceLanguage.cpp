#include "pages/authors/InterfaceLanguage.h"

#include <algorithm>

#include "accounts/Actor.h"
#include "pages/AcceptLanguage.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectEnabled =
    "select lang_id, lang_name from TORVEX_INTERFACE_LANGUAGES where lang_enabled = 1 "
    "order by lang_default desc, id";

const InterfaceLanguage* find(const std::vector<InterfaceLanguage>& languages, std::string_view code) {
    const auto found = std::find_if(languages.begin(), languages.end(),
                                    [&](const auto& language) { return text::equals(language.code, code); });
    return found == languages.end() ? nullptr : &*found;
}

}  // namespace

std::vector<InterfaceLanguage> interfaceLanguages(db::Connection& connection) {
    std::vector<InterfaceLanguage> languages;
    auto rows = connection.query(selectEnabled);
    while (rows.next()) languages.push_back({text::lowerTrim(rows.text("lang_id")), rows.text("lang_name")});
    return languages;
}

std::string knownCode(const std::vector<InterfaceLanguage>& languages, std::string_view asked) {
    const auto* language = find(languages, text::trim(asked));
    return language ? language->code : std::string();
}

std::string languageFor(const HostContext& host, const std::vector<InterfaceLanguage>& languages,
                        std::string_view chosen) {
    if (const auto* language = find(languages, text::trim(chosen))) return language->code;
    const std::string liked =
        likedLanguage(host.request.serverVariable("http_accept_language"),
                      [&](const std::string& code) { return find(languages, code) != nullptr; });
    if (!liked.empty()) return liked;
    return languages.empty() ? "en" : languages.front().code;
}

std::string presentLanguage(const HostContext& host, db::Connection& connection) {
    if (actorOf(host).isLoggedIn()) return host.session.text(sessionKey::interfaceLanguage);
    return languageFor(host, interfaceLanguages(connection), host.request.queryString("lang"));
}

}  // namespace torvex
