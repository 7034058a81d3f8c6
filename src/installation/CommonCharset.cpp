#include "installation/CommonCharset.h"

#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectCharsets =
    "select charset_label, charset_codepage from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id order by a.lang";

}  // namespace

CommonCharset commonCharset(db::Connection& connection) {
    auto rows = connection.query(selectCharsets);
    if (!rows.next()) return {};
    CommonCharset first{std::string(text::trim(rows.text("charset_label"))), rows.value("charset_codepage")};
    while (rows.next()) {
        if (!text::equals(text::trim(rows.text("charset_label")), first.label)) return {};
    }
    return first;
}

void storeCommonCharset(ApplicationValues& application, const CommonCharset& charset) {
    application.lock();
    application.set(applicationKey::charset, charset.label);
    application.set(applicationKey::codepage, text::trim(charset.codepage.toText()));
    application.unlock();
}

}  // namespace torvex
