#include "records/Websites.h"

#include "platform/Errors.h"
#include "platform/Text.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::size_t codeLength = 2;

constexpr std::string_view selectSite = "select site from TORVEX_SITES where site = ?";
constexpr std::string_view selectLanguage = "select lang from TORVEX_LANGUAGES where lang = ?";

}  // namespace

bool isSiteCode(db::Connection& connection, std::string_view site) try {
    return text::length(site) == codeLength && connection.query(selectSite, {site}).next();
} catch (...) {
    raiseFrom("isSite !");
}

bool isLanguageCode(db::Connection& connection, std::string_view lang) try {
    return text::length(lang) == codeLength && connection.query(selectLanguage, {lang}).next();
} catch (...) {
    raiseFrom("isLang !");
}

}  // namespace torvex
