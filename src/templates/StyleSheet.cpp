#include "templates/StyleSheet.h"

#include "platform/Errors.h"
#include "platform/Keys.h"
#include "platform/db/Grid.h"
#include "templates/AssetRemoval.h"

namespace torvex {

namespace {

constexpr std::string_view selectAll =
    "select ss_id, ss_Name, ss_Description from TORVEX_STYLESHEETS "
    "where ss_site = ? and ss_lang = ? order by ss_Name";

/// Only what is used in the entry's own site and language counts.
constexpr std::array<AssetUse, 2> uses{
    AssetUse{"select a.stylesheet from TORVEX_PAGES_DESIGN a inner join TORVEX_STYLESHEETS b on a.site = "
             "b.ss_site and a.lang = b.ss_lang "
             "and a.stylesheet = b.ss_id where b.ss_id = ?",
             removalStatus::usedByPage},
    AssetUse{"select a.stylesheet from TORVEX_PAGES_LIVE a inner join TORVEX_STYLESHEETS b on a.site = "
             "b.ss_site and a.lang = b.ss_lang "
             "and a.stylesheet = b.ss_id where b.ss_id = ?",
             removalStatus::usedByPage},
};

constexpr RemovableAsset removable{
    .operation = "delStylesheet",
    .word = "Stylesheet",
    .lockItem = "stylesheet",
    .locked = removalStatus::locked,
    .selectEntry =
        "select ss_site as site, ss_lang as lang, ss_name as name, ss_filename as filename from "
        "TORVEX_STYLESHEETS "
        "where ss_id = ?",
    .deleteEntry = "delete from TORVEX_STYLESHEETS where ss_id = ?",
    .directoryKey = applicationKey::stylesheetsPath,
    .uses = uses,
};

}  // namespace

std::string StyleSheet::checkStylesheet(const std::string& site, const std::string& lang, int stylesheetId,
                                        const std::string& name, const std::string& file) try {
    return std::string(assets().check(site, lang, stylesheetId, name, file));
} catch (...) {
    raiseFrom("checkStylesheet !");
}

bool StyleSheet::getStylesheet(int stylesheetId) try {
    entry_ = assets().read(stylesheetId);
    return entry_.exists;
} catch (...) {
    raiseFrom("getStylesheet !");
}

int StyleSheet::getStylesheetId(const std::string& name, const std::string& site,
                                const std::string& lang) try {
    return assets().idByName(name, site, lang);
} catch (...) {
    raiseFrom("getStylesheetId !");
}

Value StyleSheet::getStylesheetList(const std::string& site, const std::string& lang) try {
    return db::gridOf(connection_.use(host_).query(selectAll, {site, lang}));
} catch (...) {
    raiseFrom("getStylesheetList !");
}

std::string StyleSheet::getStylesheetFile(const std::string& pageIdent, const std::string& mode) try {
    return assets().fileAt(nodeIdFrom(connection_.use(host_), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("getStyleSheetFile !");
}

std::string StyleSheet::getStylesheetName(const std::string& pageIdent, const std::string& mode) try {
    return assets().nameAt(nodeIdFrom(connection_.use(host_), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("getStyleSheetName !");
}

std::string StyleSheet::getNodeId(PageId pageId) try {
    return nodeIdOf(connection_.use(host_), pageId);
} catch (...) {
    raiseFrom("getNodeId !");
}

PageId StyleSheet::getPageId(const std::string& nodeId) try {
    return pageIdOf(connection_.use(host_), nodeId);
} catch (...) {
    raiseFrom("getPageId !");
}

std::string StyleSheet::delStylesheet(int stylesheetId, int advId) try {
    return removeAsset(host_, removable, stylesheetId, advId);
} catch (...) {
    raiseFrom("delStylesheet !");
}

}  // namespace torvex
