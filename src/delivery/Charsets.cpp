// cServer: charsets by language, and the parts of a query.

#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/Websites.h"

namespace torvex {

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
    std::string node = text::lowerTrim(host_.request.queryString("pageId"));
    if (!node.empty()) {
        if (text::isNumeric(node)) node = getNodeId(text::toNumber(node));
        if (node.size() >= PageIdentity::rootLength) {
            codePage = getCharsetCodepage(std::string(langOf(node)));
            charset = getCharsetLabel(std::string(langOf(node)));
        }
    } else {
        codePage = session.text("tvx_codePage");
        charset = session.text("tvx_charset");
    }
    if (charset.empty()) return;
    session.set("tvx_codePage", codePage);
    session.set("tvx_charset", charset);
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
