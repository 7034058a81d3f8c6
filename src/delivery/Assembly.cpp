// cServer: the finished page.

#include "delivery/Breadcrumb.h"
#include "delivery/Feeds.h"
#include "delivery/OnlineState.h"
#include "delivery/PageAssembly.h"
#include "delivery/PageBodies.h"
#include "delivery/PageMetaData.h"
#include "delivery/ViewCount.h"
#include "delivery/cServer.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "templates/DesignAssets.h"

namespace torvex {

namespace {

/// What is in force for a live page by one of the registers. Its line stands twice in the chain of an error:
/// that of the visitors' operation, and that of the register's.
std::string liveFile(std::string_view operation, const AssetStatements& assets, HostContext& host,
                     db::Connection& connection, PageId pageId) {
    return asLevel(operation, [&]() -> std::string {
        return pageId > 0 ? fileInForce(assets, host, connection, pageId, Twin::Live) : std::string();
    });
}

/// The page of a record, from live data. What it asks for can be asked for by visitors' scripts as well, and
/// is told like that when it fails.
class VisitorsView final : public AssemblyView {
  public:
    VisitorsView(HostContext& host, db::Connection& connection, const PageRecord& record)
        : host_(host), connection_(connection), record_(record), today_(host.clock.today()) {}

    bool hasLoginForm() const { return hasLoginForm_; }

    AssemblyPage page() override {
        return {record_.pageId,
                record_.nodeId,
                Twin::Live,
                record_.templateFile,
                record_.previous,
                record_.next,
                record_.up,
                record_.access == pageAccess::member,
                false};
    }
    bool canLeadTo(PageId pageId) override {
        return asLevel("isPage !", [&] { return isPageOnline(connection_, pageId, today_); });
    }
    /// A sub-page counts as a view of its own.
    void countSubPage(PageId pageId) override {
        asLevel("logPage!", [&] { countView(host_, nodeIdFrom(connection_, pageId)); });
    }

    void noteLoginForm() override { hasLoginForm_ = true; }

    std::string templateFile(PageId pageId) override {
        return liveFile("getTemplateFile !", contentTemplateStatements, host_, connection_, pageId);
    }
    std::string stylesheetFile(PageId pageId) override {
        return liveFile("getStylesheetFile !", stylesheetStatements, host_, connection_, pageId);
    }
    std::string baseTemplateFile(PageId pageId) override {
        return liveFile("getBaseTemplateFile !", baseTemplateStatements, host_, connection_, pageId);
    }

    std::string metaData() override {
        return asLevel("getMetaDataHTML  !",
                       [&] { return metaDataHtml(connection_, identify(connection_, record_.pageId)); });
    }
    std::string breadcrumb() override {
        return asLevel("getBreadcrumb !", [&] {
            return breadcrumbTrail(host_, connection_, nodeIdFrom(connection_, record_.pageId), Twin::Live);
        });
    }
    std::string fillBodies(PageId pageId, std::string html) override {
        return asLevel("fillBodies !", [&] {
            return PageBodies(host_, connection_, Twin::Live, xmlFeed).fill(pageId, std::move(html));
        });
    }

    std::string missingTemplate() const override { return errorTarget("no_template"); }
    std::string missingBaseTemplate() const override { return errorTarget("no_base_template"); }

  private:
    std::string errorTarget(std::string_view error) const {
        return std::string(errorMark) + "/error.asp?pageId=" + text::fromNumber(record_.pageId) +
               "&error=" + std::string(error);
    }

    HostContext& host_;
    db::Connection& connection_;
    const PageRecord& record_;
    const std::string today_;
    bool hasLoginForm_ = false;
};

}  // namespace

std::string cServer::torvex_preparePage(const std::string& applicationSubTitle) try {
    if (record_.nodeId.size() < PageIdentity::rootLength || !(record_.pageId > 0)) return {};
    VisitorsView view(host_, connection(), record_);
    std::string html =
        assemblePage(host_, connection(), view, modules_, text::lowerTrim(applicationSubTitle));
    hasLoginForm_ = view.hasLoginForm();
    return html;
} catch (...) {
    raiseFrom("torvex_preparePage !");
}

std::string cServer::getTemplateFile(const std::string& pageIdent, const std::string& /*mode*/) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    return pageId > 0 ? fileInForce(contentTemplateStatements, host_, connection(), pageId, Twin::Live)
                      : std::string();
} catch (...) {
    raiseFrom("getTemplateFile !");
}

std::string cServer::getStylesheetFile(const std::string& pageIdent, const std::string& /*mode*/) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    return pageId > 0 ? fileInForce(stylesheetStatements, host_, connection(), pageId, Twin::Live)
                      : std::string();
} catch (...) {
    raiseFrom("getStylesheetFile !");
}

std::string cServer::getBaseTemplateFile(const std::string& pageIdent, const std::string& /*mode*/) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    return pageId > 0 ? fileInForce(baseTemplateStatements, host_, connection(), pageId, Twin::Live)
                      : std::string();
} catch (...) {
    raiseFrom("getBaseTemplateFile !");
}

}  // namespace torvex
