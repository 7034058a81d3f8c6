// cServer: the finished page.

#include "delivery/PageAssembly.h"
#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "templates/BaseTemplate.h"
#include "templates/StyleSheet.h"
#include "templates/Template.h"

namespace torvex {

namespace {

std::string numberText(PageId pageId) {
    return text::fromNumber(pageId);
}

/// The page of the record, from live data.
class VisitorsView final : public AssemblyView {
  public:
    explicit VisitorsView(cServer& server) : server_(server) {}

    AssemblyPage page() override {
        return {server_.pgPageId(),
                server_.pgNodeId(),
                Twin::Live,
                server_.pgTemplateFile(),
                server_.pgPrevious(),
                server_.pgNext(),
                server_.pgUp(),
                server_.pgAccess() == pageAccess::member,
                false};
    }
    bool canLeadTo(PageId pageId) override { return server_.isPage(numberText(pageId)); }
    /// A sub-page counts as a view of its own.
    void countSubPage(PageId pageId) override { server_.logPage(numberText(pageId)); }

    std::string templateFile(PageId pageId) override { return server_.getTemplateFile(numberText(pageId)); }
    std::string stylesheetFile(PageId pageId) override {
        return server_.getStylesheetFile(numberText(pageId));
    }
    std::string baseTemplateFile(PageId pageId) override {
        return server_.getBaseTemplateFile(numberText(pageId));
    }

    std::string metaData() override { return server_.getMetaDataHTML(numberText(server_.pgPageId())); }
    std::string breadcrumb() override { return server_.getBreadcrumb(numberText(server_.pgPageId())); }
    std::string fillBodies(PageId pageId, std::string html) override {
        return server_.fillBodies(numberText(pageId), html);
    }

    std::string missingTemplate() const override { return errorTarget("no_template"); }
    std::string missingBaseTemplate() const override { return errorTarget("no_base_template"); }

  private:
    std::string errorTarget(std::string_view error) const {
        return "error:/error.asp?pageId=" + numberText(server_.pgPageId()) + "&error=" + std::string(error);
    }

    cServer& server_;
};

/// Reads what is in force for a page through one of the registers; "" when there is no such page.
template <typename Register>
std::string fileInForce(HostContext& host, db::Connection& connection, const std::string& pageIdent,
                        std::string (Register::*fileOfPage)(const std::string&, const std::string&)) {
    const PageId pageId = pageIdFrom(connection, pageIdent);
    if (!(pageId > 0)) return {};
    Register assets(host);
    assets.connect(connection);
    return (assets.*fileOfPage)(numberText(pageId), "L");
}

}  // namespace

std::string cServer::torvex_preparePage(const std::string& applicationSubTitle) try {
    if (record_.nodeId.size() < PageIdentity::rootLength || !(record_.pageId > 0)) return {};
    VisitorsView view(*this);
    return assemblePage(host_, connection(), view, modules_, text::lowerTrim(applicationSubTitle));
} catch (...) {
    raiseFrom("torvex_preparePage !");
}

std::string cServer::getTemplateFile(const std::string& pageIdent, const std::string& /*mode*/) try {
    return fileInForce<Template>(host_, connection(), pageIdent, &Template::getTemplateFile);
} catch (...) {
    raiseFrom("getTemplateFile !");
}

std::string cServer::getStylesheetFile(const std::string& pageIdent, const std::string& /*mode*/) try {
    return fileInForce<StyleSheet>(host_, connection(), pageIdent, &StyleSheet::getStylesheetFile);
} catch (...) {
    raiseFrom("getStylesheetFile !");
}

std::string cServer::getBaseTemplateFile(const std::string& pageIdent, const std::string& /*mode*/) try {
    return fileInForce<BaseTemplate>(host_, connection(), pageIdent, &BaseTemplate::getBaseTemplateFile);
} catch (...) {
    raiseFrom("getBaseTemplateFile !");
}

}  // namespace torvex
