// cServer: charsets by language, and the parts of a query.

#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/Text.h"
#include "platform/db/ScopeMemory.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectCharset =
    "select b.charset_codepage, b.charset_label, b.charset_name from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id where a.lang = ?";

enum class Column { CodePage, Label, Name };

/// The three columns of a language's charset, divided by a character that no text of the database holds; ""
/// for a language that isn't known.
std::string charsetRow(db::Connection& connection, const std::string& lang) {
    const std::string language = text::lowerTrim(lang);
    return db::remembered(connection, selectCharset, language, [&] {
        std::string row;
        auto rows = connection.query(selectCharset, {language});
        if (!rows.next()) return row;
        for (const auto* column : {"charset_codepage", "charset_label", "charset_name"}) {
            row.append(text::trim(rows.text(column))).append(1, '\0');
        }
        return row;
    });
}

std::string charsetColumn(db::Connection& connection, const std::string& lang, Column column) {
    const std::string row = charsetRow(connection, lang);
    std::string_view rest = row;
    for (int skipped = 0; skipped < static_cast<int>(column) && !rest.empty(); ++skipped) {
        rest.remove_prefix(rest.find('\0') + 1);
    }
    return std::string(rest.substr(0, rest.find('\0')));
}

}  // namespace

std::string cServer::getCharsetCodepage(const std::string& lang) try {
    return charsetColumn(connection(), lang, Column::CodePage);
} catch (...) {
    raiseFrom("getCharsetCodepage !");
}

std::string cServer::getCharsetLabel(const std::string& lang) try {
    return charsetColumn(connection(), lang, Column::Label);
} catch (...) {
    raiseFrom("getCharsetLabel !");
}

std::string cServer::getCharsetName(const std::string& lang) try {
    return charsetColumn(connection(), lang, Column::Name);
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
