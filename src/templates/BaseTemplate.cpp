#include "templates/BaseTemplate.h"

#include "platform/Errors.h"
#include "platform/db/Grid.h"

namespace torvex {

namespace {

constexpr std::string_view selectAll =
    "select btpl_id, btpl_Name, btpl_Description from TORVEX_BASETEMPLATES "
    "where btpl_site = ? and btpl_lang = ? order by btpl_Name";

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
    return assets().fileOfPage(pageIdent, twinOf(mode));
} catch (...) {
    raiseFrom("getBaseTemplateFile !");
}

std::string BaseTemplate::getBaseTemplateName(const std::string& pageIdent, const std::string& mode) try {
    return assets().nameOfPage(pageIdent, twinOf(mode));
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

}  // namespace torvex
