#include "templates/BaseTemplate.h"

#include "platform/Errors.h"
#include "platform/Keys.h"
#include "platform/db/Grid.h"
#include "templates/AssetRemoval.h"

namespace torvex {

namespace {

constexpr std::string_view selectAll =
    "select btpl_id, btpl_Name, btpl_Description from TORVEX_BASETEMPLATES "
    "where btpl_site = ? and btpl_lang = ? order by btpl_Name";

/// Only what is used in the entry's own site and language counts.
constexpr std::array<AssetUse, 2> uses{
    AssetUse{"select a.baseTemplate from TORVEX_PAGES_DESIGN a inner join TORVEX_BASETEMPLATES b on a.site = "
             "b.btpl_site and a.lang = b.btpl_lang "
             "and a.baseTemplate = b.btpl_id where b.btpl_id = ?",
             removalStatus::usedByPage},
    AssetUse{"select a.baseTemplate from TORVEX_PAGES_LIVE a inner join TORVEX_BASETEMPLATES b on a.site = "
             "b.btpl_site and a.lang = b.btpl_lang "
             "and a.baseTemplate = b.btpl_id where b.btpl_id = ?",
             removalStatus::usedByPage},
};

constexpr RemovableAsset removable{
    .operation = "delBaseTemplate",
    .word = "Base template",
    .lockItem = "baseTemplate",
    .locked = removalStatus::locked,
    .selectEntry =
        "select btpl_site as site, btpl_lang as lang, btpl_name as name, btpl_filename as filename from "
        "TORVEX_BASETEMPLATES "
        "where btpl_id = ?",
    .deleteEntry = "delete from TORVEX_BASETEMPLATES where btpl_id = ?",
    .directoryKey = applicationKey::baseTemplatesPath,
    .uses = uses,
};

}  // namespace

std::string BaseTemplate::checkBaseTemplate(const std::string& site, const std::string& lang,
                                            int baseTemplateId, const std::string& name,
                                            const std::string& file) try {
    return std::string(assets().check(site, lang, baseTemplateId, name, file));
} catch (...) {
    raiseFrom("checkBaseTemplate !");
}

bool BaseTemplate::getBaseTemplate(int baseTemplateId) try {
    entry_ = assets().read(baseTemplateId);
    return entry_.exists;
} catch (...) {
    raiseFrom("getBaseTemplate !");
}

int BaseTemplate::getBaseTemplateId(const std::string& name, const std::string& site,
                                    const std::string& lang) try {
    return assets().idByName(name, site, lang);
} catch (...) {
    raiseFrom("getBaseTemplateId !");
}

Value BaseTemplate::getBaseTemplateList(const std::string& site, const std::string& lang) try {
    return db::gridOf(connection_.use(host_).query(selectAll, {site, lang}));
} catch (...) {
    raiseFrom("getBaseTemplateList !");
}

std::string BaseTemplate::getBaseTemplateFile(const std::string& pageIdent, const std::string& mode) try {
    return assets().fileAt(nodeIdFrom(connection_.use(host_), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("getBaseTemplateFile !");
}

std::string BaseTemplate::getBaseTemplateName(const std::string& pageIdent, const std::string& mode) try {
    return assets().nameAt(nodeIdFrom(connection_.use(host_), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("getBaseTemplateName !");
}

std::string BaseTemplate::getNodeId(PageId pageId) try {
    return nodeIdOf(connection_.use(host_), pageId);
} catch (...) {
    raiseFrom("getNodeId !");
}

PageId BaseTemplate::getPageId(const std::string& nodeId) try {
    return pageIdOf(connection_.use(host_), nodeId);
} catch (...) {
    raiseFrom("getPageId !");
}

std::string BaseTemplate::delBaseTemplate(int baseTemplateId, int advId) try {
    return removeAsset(host_, removable, baseTemplateId, advId);
} catch (...) {
    raiseFrom("delBaseTemplate !");
}

}  // namespace torvex
