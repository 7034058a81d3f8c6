#include "delivery/LinkNotation.h"

#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex::linkNotation {

namespace {

constexpr std::string_view selectDocument =
    "select doc_filename from TORVEX_DOCUMENTS where doc_site = ? and doc_title = ?";

}  // namespace

std::string_view withoutQuotes(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::optional<std::string_view> pageInAddress(std::string_view address) {
    constexpr std::string_view parameter = "?pageId=";
    std::size_t at = text::find(address, parameter);
    if (at == text::npos) at = text::find(address, "&pageId=");
    if (at == text::npos) return std::nullopt;
    at += parameter.size();
    return address.substr(at, address.find('&', at) - at);
}

Document documentNamed(std::string_view argument, std::string_view site) {
    constexpr std::size_t siteLength = 2;
    std::string name = text::replaceAll(argument, "\\", "/");
    if (name.size() <= siteLength || name[siteLength] != '/') return {std::string(site), std::move(name)};
    // Its folder has the site's code in small letters.
    return {text::lower(name.substr(0, siteLength)), name.substr(siteLength + 1)};
}

std::string documentOfTitle(db::Connection& connection, std::string_view site, std::string_view title) try {
    auto rows = connection.query(selectDocument, {text::lowerTrim(site), title});
    return rows.next() ? std::string(text::trim(rows.text("doc_filename"))) : std::string();
} catch (...) {
    raiseFrom("getDocFile !");
}

}  // namespace torvex::linkNotation
