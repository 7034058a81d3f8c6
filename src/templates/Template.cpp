#include "templates/Template.h"

#include "platform/Errors.h"
#include "platform/Keys.h"
#include "platform/db/Grid.h"
#include "templates/AssetRemoval.h"

namespace torvex {

namespace {

constexpr std::string_view selectSystem =
    "select tpl_id, tpl_Name, tpl_Description, tpl_System from TORVEX_TEMPLATES "
    "where tpl_site = ? and tpl_lang = ? and tpl_System = 1 order by tpl_Name";
constexpr std::string_view selectOthers =
    "select tpl_id, tpl_Name, tpl_Description, tpl_System from TORVEX_TEMPLATES "
    "where tpl_site = ? and tpl_lang = ? and tpl_System = 0 order by tpl_Name";
constexpr std::string_view selectAll =
    "select tpl_id, tpl_Name, tpl_Description, tpl_System from TORVEX_TEMPLATES "
    "where tpl_site = ? and tpl_lang = ? order by tpl_System, tpl_Name";

/// Only what is used in the entry's own site and language counts.
constexpr std::array<AssetUse, 6> uses{
    AssetUse{"select a.template from TORVEX_PAGES_DESIGN a inner join TORVEX_TEMPLATES b on a.site = "
             "b.tpl_site and a.lang = b.tpl_lang "
             "and a.template = b.tpl_id where b.tpl_id = ?",
             removalStatus::usedByPage},
    AssetUse{"select a.template from TORVEX_PAGES_LIVE a inner join TORVEX_TEMPLATES b on a.site = "
             "b.tpl_site and a.lang = b.tpl_lang "
             "and a.template = b.tpl_id where b.tpl_id = ?",
             removalStatus::usedByPage},
    AssetUse{"select a.templateId from TORVEX_NEWSFLASH_DESIGN a inner join TORVEX_TEMPLATES b on a.site = "
             "b.tpl_site and a.lang = b.tpl_lang "
             "and a.templateId = b.tpl_id where b.tpl_id = ?",
             removalStatus::usedByNewsflash},
    AssetUse{"select a.templateId from TORVEX_NEWSFLASH_LIVE a inner join TORVEX_TEMPLATES b on a.site = "
             "b.tpl_site and a.lang = b.tpl_lang "
             "and a.templateId = b.tpl_id where b.tpl_id = ?",
             removalStatus::usedByNewsflash},
    AssetUse{"select a.templateId from TORVEX_DYNMENU_DESIGN a inner join TORVEX_TEMPLATES b on a.site = "
             "b.tpl_site and a.lang = b.tpl_lang "
             "and a.templateId = b.tpl_id where b.tpl_id = ?",
             removalStatus::usedByMenu},
    AssetUse{"select a.templateId from TORVEX_DYNMENU_LIVE a inner join TORVEX_TEMPLATES b on a.site = "
             "b.tpl_site and a.lang = b.tpl_lang "
             "and a.templateId = b.tpl_id where b.tpl_id = ?",
             removalStatus::usedByMenu},
};

constexpr RemovableAsset removable{
    .operation = "delTemplate",
    .word = "Content template",
    .lockItem = "contentTemplate",
    .locked = removalStatus::templateLocked,
    .selectEntry =
        "select tpl_site as site, tpl_lang as lang, tpl_name as name, tpl_filename as filename from "
        "TORVEX_TEMPLATES "
        "where tpl_id = ?",
    .deleteEntry = "delete from TORVEX_TEMPLATES where tpl_id = ?",
    .directoryKey = applicationKey::contentTemplatesPath,
    .uses = uses,
};

}  // namespace

std::string Template::checkTemplate(const std::string& site, const std::string& lang, int templateId,
                                    const std::string& name, const std::string& file) try {
    return std::string(assets().check(site, lang, templateId, name, file));
} catch (...) {
    raiseFrom("checkTemplate !");
}

bool Template::getTemplate(int templateId) try {
    entry_ = assets().read(templateId);
    return entry_.exists;
} catch (...) {
    raiseFrom("getTemplate !");
}

int Template::getTemplateId(const std::string& name, const std::string& site, const std::string& lang) try {
    return assets().idByName(name, site, lang);
} catch (...) {
    raiseFrom("getTemplateId !");
}

Value Template::getTemplateList(const std::string& site, const std::string& lang, int listType) try {
    const auto statement = listType == 1 ? selectSystem : listType == 0 ? selectOthers : selectAll;
    return db::gridOf(connection_.use(host_).query(statement, {site, lang}));
} catch (...) {
    raiseFrom("getTemplateList !");
}

std::string Template::getTemplateFile(const std::string& pageIdent, const std::string& mode) try {
    return assets().fileAt(nodeIdFrom(connection_.use(host_), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("getTemplateFile !");
}

std::string Template::getTemplateName(const std::string& pageIdent, const std::string& mode) try {
    return assets().nameAt(nodeIdFrom(connection_.use(host_), pageIdent), twinOf(mode));
} catch (...) {
    raiseFrom("getTemplateName !");
}

std::string Template::getNodeId(PageId pageId) try {
    return nodeIdOf(connection_.use(host_), pageId);
} catch (...) {
    raiseFrom("getNodeId !");
}

PageId Template::getPageId(const std::string& nodeId) try {
    return pageIdOf(connection_.use(host_), nodeId);
} catch (...) {
    raiseFrom("getPageId !");
}

std::string Template::delTemplate(int templateId, int advId) try {
    return removeAsset(host_, removable, templateId, advId);
} catch (...) {
    raiseFrom("delTemplate !");
}

}  // namespace torvex
