#include <fmt/format.h>
#include <optional>

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"
#include "templates/HTMLTemplate.h"
#include "templates/Template.h"

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

PageId HTMLTemplate::loadAppTpl(const std::string& pageIdent, const std::string& tplTitle,
                                const std::string& mode) try {
    constexpr PageId none = -1;
    buffer_.clear();
    db::Connection& connection = connection_.use(host_);
    const PageIdentity page = identify(connection, pageIdent);
    if (!page.isValid()) return none;
    const Twin twin = twinOf(text::trim(mode));
    const auto folder = systemFolderOf(connection, page, twin);
    if (!folder) return none;
    auto found = templatePageIn(connection, *folder, text::trim(tplTitle), twin);
    if (!found) return none;
    if (found->inherits) {
        Template templates(host_);
        templates.connect(connection_);
        found->file =
            templates.getTemplateFile(text::fromNumber(found->pageId), std::string(text::trim(mode)));
    }
    if (found->file.empty()) return none;
    const std::string path = fmt::format("{}{}/{}/{}", host_.application.text("torvex_contentTemplates_dir"),
                                         siteOf(page.nodeId), langOf(page.nodeId), found->file);
    return load(path) ? found->pageId : none;
} catch (...) {
    raiseFrom("loadAppTpl !");
}

void HTMLTemplate::syncFrames(const std::string& pageIdent) try {
    if (!host_.application.isTrue("torvex_frames")) return;
    const PageIdentity page = identify(connection_.use(host_), pageIdent);
    if (!page.isValid()) return;
    const std::string script = fmt::format(
        "<script language=\"JavaScript\">if (window.top.navigation) "
        "{{window.top.navigation('{}','{}')}}</script>"
        "</body>",
        text::fromNumber(page.pageId), jsEncode(page.nodeId));
    buffer_ = text::replaceAll(buffer_, "</body>", script);
} catch (...) {
    raiseFrom("syncFrames !");
}

std::string HTMLTemplate::getNodeId(PageId pageId) try {
    return nodeIdOf(connection_.use(host_), pageId);
} catch (...) {
    raiseFrom("getNodeId !");
}

PageId HTMLTemplate::getPageId(const std::string& nodeId) try {
    return pageIdOf(connection_.use(host_), nodeId);
} catch (...) {
    raiseFrom("getPageId !");
}

}  // namespace torvex
