#include "templates/Template.h"

#include "platform/Errors.h"
#include "platform/db/Grid.h"

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
    return assets().fileOfPage(pageIdent, twinOf(mode));
} catch (...) {
    raiseFrom("getTemplateFile !");
}

std::string Template::getTemplateName(const std::string& pageIdent, const std::string& mode) try {
    return assets().nameOfPage(pageIdent, twinOf(mode));
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

}  // namespace torvex
