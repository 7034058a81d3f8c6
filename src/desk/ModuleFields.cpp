#include "desk/ModuleFields.h"

#include <algorithm>
#include <limits>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/Existence.h"

namespace torvex {

namespace {

constexpr std::string_view selectTemplate =
    "select tpl_id from TORVEX_TEMPLATES where tpl_id = ? and tpl_site = ? and tpl_lang = ? and tpl_system = "
    "1";

}  // namespace

ModulePlace placeFrom(std::string_view site, std::string_view lang) {
    return {text::lowerTrim(site), text::lowerTrim(lang)};
}

bool isWebsite(db::Connection& connection, const ModulePlace& place) {
    return siteExists(connection, place.site) && languageExists(connection, place.lang);
}

std::string cleanField(std::string_view text, std::size_t longest) {
    return std::string(text::trim(text::first(text::trim(text), longest)));
}

std::string storedLines(std::string_view text) {
    std::string lines = text::replaceAll(text, "\r\n", "\n");
    lines = text::replaceAll(lines, "\r", "\n");
    return text::replaceAll(lines, "\n", "\r\n");
}

bool isOneOf(int choice, int most) {
    return choice >= 0 && choice <= most;
}

bool isOrderOrAlignment(int choice) {
    constexpr int choices = 6;
    return choice != 0 && isOneOf(choice, choices);
}

int flagOf(bool is) {
    return is ? 1 : 0;
}

bool isModuleTemplate(db::Connection& connection, const ModulePlace& place, int templateId) {
    return connection.query(selectTemplate, {templateId, place.site, place.lang}).next();
}

int shortNumber(int number, int least) {
    return std::clamp(number, least, static_cast<int>(std::numeric_limits<short>::max()));
}

}  // namespace torvex
