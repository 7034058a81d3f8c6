#include "administration/SiteRegister.h"

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/SiteCodes.h"

namespace torvex {

namespace {

constexpr std::string_view selectCharsets =
    "select charset_label, charset_codepage from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id order by a.lang";

}  // namespace

std::string firstText(db::Connection& connection, std::string_view statement, std::string_view key) {
    auto rows = connection.query(statement, {key});
    return rows.next() ? rows.value(std::size_t{0}).toText() : std::string();
}

std::vector<std::string> safeCodes(db::Connection& connection, std::string_view statement) {
    std::vector<std::string> codes;
    auto rows = connection.query(statement);
    while (rows.next()) {
        std::string code = text::lowerTrim(rows.value(std::size_t{0}).toText());
        if (isSafeCode(code)) codes.push_back(std::move(code));
    }
    return codes;
}

void deriveCommonCharset(HostContext& host, db::Connection& connection) {
    std::string label;
    std::string codepage;
    auto rows = connection.query(selectCharsets);
    for (bool isFirst = true; rows.next(); isFirst = false) {
        const std::string other(text::trim(rows.text("charset_label")));
        if (isFirst) {
            label = other;
            codepage = text::trim(rows.text("charset_codepage"));
        } else if (!text::equals(other, label)) {
            label.clear();
            codepage.clear();
            break;
        }
    }
    host.application.lock();
    host.application.set("torvex_charset", label);
    host.application.set("torvex_codepage", codepage);
    host.application.unlock();
}

}  // namespace torvex
