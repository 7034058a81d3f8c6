#include "templates/ApplicationTemplate.h"

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/SystemBranch.h"
#include "templates/DesignAssets.h"
#include "templates/DesignPath.h"

namespace torvex {

namespace {

constexpr std::string_view selectSystemFolderLive =
    "select app_system_folder from TORVEX_PAGES_LIVE where pageId = ?";
constexpr std::string_view selectSystemFolderDesign =
    "select app_system_folder from TORVEX_PAGES_DESIGN where pageId = ?";

constexpr std::string_view selectTemplatePageLive =
    "select a.pageId, a.template, b.tpl_filename from TORVEX_PAGES_LIVE a "
    "left outer join TORVEX_TEMPLATES b on b.tpl_id = a.template "
    "where a.nodeId like ? and a.title = ? and a.type = 'P' order by a.nodeId";
constexpr std::string_view selectTemplatePageDesign =
    "select a.pageId, a.template, b.tpl_filename from TORVEX_PAGES_DESIGN a "
    "left outer join TORVEX_TEMPLATES b on b.tpl_id = a.template "
    "where a.nodeId like ? and a.title = ? and a.type = 'P' order by a.nodeId";

/// A page of an application's system folder, which is a content template.
struct TemplatePage {
    PageId pageId;
    bool inherits;  ///< its file is that of an ancestor
    std::string file;
};

/// The node of the folder in which an application keeps its templates; nothing when it has none.
std::optional<std::string> systemFolderOf(db::Connection& connection, const PageIdentity& page, Twin twin) {
    const auto statement = twin == Twin::Design ? selectSystemFolderDesign : selectSystemFolderLive;
    std::optional<PageId> folder;
    {
        db::Rows rows = connection.query(statement, {page.pageId});
        if (rows.next()) folder = rows.number("app_system_folder");
    }
    if (!folder || *folder < 0) return std::nullopt;
    return *folder != 0 ? nodeIdOf(connection, *folder) : systemBranch::below(page.nodeId);
}

std::optional<TemplatePage> templatePageIn(db::Connection& connection, const std::string& folder,
                                           std::string_view title, Twin twin) {
    const auto statement = twin == Twin::Design ? selectTemplatePageDesign : selectTemplatePageLive;
    const std::string below = folder + ".%";
    db::Rows rows = connection.query(statement, {std::string_view(below), title});
    if (!rows.next()) return std::nullopt;
    const PageId pageId = rows.number("pageId");
    const bool inherits = rows.number("template") == 0;
    return TemplatePage{pageId, inherits, std::string(text::trim(rows.text("tpl_filename")))};
}

}  // namespace

std::optional<ApplicationTemplate> applicationTemplate(HostContext& host, db::Connection& connection,
                                                       const PageIdentity& page, std::string_view title,
                                                       Twin twin) {
    if (!page.isValid()) return std::nullopt;
    const auto folder = systemFolderOf(connection, page, twin);
    if (!folder) return std::nullopt;
    auto found = templatePageIn(connection, *folder, title, twin);
    if (!found) return std::nullopt;
    if (found->inherits) {
        found->file = fileInForce(contentTemplateStatements, host, connection, found->pageId, twin);
    }
    if (found->file.empty()) return std::nullopt;
    return ApplicationTemplate{
        found->pageId, designPath(host.application, applicationKey::contentTemplatesPath, siteOf(page.nodeId),
                                  langOf(page.nodeId), found->file)};
}

}  // namespace torvex
