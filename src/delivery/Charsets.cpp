// cServer: charsets by language, and the parts of a query.

#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/Websites.h"

namespace torvex {

namespace {

/// As one of the operations below gives it.
std::string charsetValue(db::Connection& connection, std::string_view lang, std::string_view operation,
                         std::string_view column) {
    return asLevel(operation, [&] { return charsetColumn(connection, lang, column); });
}

}  // namespace

std::string cServer::getCharsetCodepage(const std::string& lang) try {
    return charsetColumn(connection(), lang, "charset_codepage");
} catch (...) {
    raiseFrom("getCharsetCodepage !");
}

std::string cServer::getCharsetLabel(const std::string& lang) try {
    return charsetColumn(connection(), lang, "charset_label");
} catch (...) {
    raiseFrom("getCharsetLabel !");
}

std::string cServer::getCharsetName(const std::string& lang) try {
    return charsetColumn(connection(), lang, "charset_name");
} catch (...) {
    raiseFrom("getCharsetName !");
}

void cServer::setCodePage() {
    auto& session = host_.session;
    std::string codePage;
    std::string charset;
    const std::string asked = host_.request.queryString("pageId");
    if (!text::trim(asked).empty()) {
        const std::string node = nodeIdFrom(connection(), asked);
        if (node.size() >= PageIdentity::rootLength) {
            codePage = charsetValue(connection(), langOf(node), "getCharsetCodepage !", "charset_codepage");
            charset = charsetValue(connection(), langOf(node), "getCharsetLabel !", "charset_label");
        }
    } else {
        codePage = session.text(sessionKey::codePage);
        charset = session.text(sessionKey::charset);
    }
    if (charset.empty()) return;
    session.setPassing(sessionKey::codePage, codePage);
    session.setPassing(sessionKey::charset, charset);
    if (text::isNumeric(codePage)) session.setCodePage(static_cast<int>(text::toNumber(codePage)));
}

std::string cServer::getParameterValue(const std::string& parameter, const std::string& queryString) try {
    std::string query = text::lower(queryString);
    std::erase(query, ' ');
    query = text::replaceAll(query, ",", "&");
    if (const std::size_t mark = query.find('?'); mark != std::string::npos) query.erase(0, mark + 1);
    query.insert(0, "&");
    const std::string name = "&" + text::lowerTrim(parameter) + "=";
    const std::size_t at = query.find(name);
    if (at == std::string::npos) return {};
    const std::size_t value = at + name.size();
    return query.substr(value, query.find('&', value) - value);
} catch (...) {
    raiseFrom("getParameterValue !");
}

}  // namespace torvex
