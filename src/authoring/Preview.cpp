// cManager: the page as its authors see it.

#include "authoring/EditFrame.h"
#include "authoring/FeedReport.h"
#include "authoring/cManager.h"
#include "delivery/Breadcrumb.h"
#include "delivery/Feeds.h"
#include "delivery/PageAssembly.h"
#include "delivery/PageBodies.h"
#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "templates/BaseTemplate.h"
#include "templates/StyleSheet.h"
#include "templates/Template.h"

namespace torvex {

namespace {

/// In place of a subtitle: the page is built for editing.
constexpr std::string_view editSwitch = "#edit#";
/// Begins an answer that isn't a page but the address to go to.
constexpr std::string_view errorMark = "error:";

constexpr double linksDisabledLabel = 2587;

/// The answer for a page without a base template.
constexpr std::string_view missingBase = "error:/torvex/error.asp?error=template_body_error&flag=0";

std::string_view modeOf(Twin twin) {
    return twin == Twin::Design ? "D" : "L";
}

/// The page of the record in one of the modes.
class AuthorsView final : public AssemblyView {
  public:
    AuthorsView(cManager& manager, HostContext& host, db::Connection& connection, Twin twin, bool edits)
        : manager_(manager),
          host_(host),
          connection_(connection),
          server_(host),
          twin_(twin),
          mode_(modeOf(twin)),
          edits_(edits) {
        server_.connect(connection);
    }

    AssemblyPage page() override {
        return {manager_.pgPageId(),
                manager_.pgNodeId(),
                twin_,
                manager_.pgTemplateFile(),
                manager_.pgPrevious(),
                manager_.pgNext(),
                manager_.pgUp(),
                server_.isSecuredPage(number()),
                true};
    }
    bool canLeadTo(PageId pageId) override { return manager_.isPage(text::fromNumber(pageId), mode_); }
    /// What an author looks at counts as no visit.
    void countSubPage(PageId) override {}

    std::string templateFile(PageId pageId) override { return fileOf(&Template::getTemplateFile, pageId); }
    std::string stylesheetFile(PageId pageId) override {
        return fileOf(&StyleSheet::getStylesheetFile, pageId);
    }
    std::string baseTemplateFile(PageId pageId) override {
        return fileOf(&BaseTemplate::getBaseTemplateFile, pageId);
    }

    std::string metaData() override { return server_.getMetaDataHTML(number()); }
    std::string breadcrumb() override { return breadcrumbTrail(host_, connection_, number(), twin_); }
    std::string fillBodies(PageId pageId, std::string html) override {
        return manager_.fillBodies(text::fromNumber(pageId), mode_, html, edits_);
    }

    std::string missingTemplate() const override {
        return "error:/torvex/error.asp?pageId=" + number() + "&error=template_not_found&flag=0";
    }
    std::string missingBaseTemplate() const override { return std::string(missingBase); }

  private:
    std::string number() const { return text::fromNumber(manager_.pgPageId()); }

    template <typename Register>
    std::string fileOf(std::string (Register::*fileInForce)(const std::string&, const std::string&),
                       PageId pageId) {
        Register assets(host_);
        assets.connect(connection_);
        return (assets.*fileInForce)(text::fromNumber(pageId), mode_);
    }

    cManager& manager_;
    HostContext& host_;
    db::Connection& connection_;
    cServer server_;
    const Twin twin_;
    const std::string mode_;
    const bool edits_;
};

std::string framed(HostContext& host, db::Connection& connection, const std::string& pageIdent,
                   PageBodies& bodies, const std::string& html) {
    EditFrame frame = [&]() -> EditFrame {
        try {
            return {host, connection, identify(connection, pageIdent)};
        } catch (...) {
            raiseFrom("fillBodies !");
        }
    }();
    return frame.withForm(bodies.fill(pageIdent, html, &frame));
}

}  // namespace

std::string cManager::torvex_preparePage(const std::string& mode,
                                         const std::string& applicationSubTitle) try {
    if (page_.nodeId.size() < PageIdentity::rootLength || !(page_.pageId > 0)) return {};
    const Twin twin = twinOf(mode);
    const std::string subTitle = text::lowerTrim(applicationSubTitle);
    const bool edits = subTitle == editSwitch;
    AuthorsView view(*this, host_, connection(), twin, edits);
    std::string html = assemblePage(host_, connection(), view, modules_, edits ? std::string() : subTitle);
    if (html.starts_with(errorMark)) return html;
    return buildLinks(html, std::string(siteOf(page_.nodeId)), std::string(langOf(page_.nodeId)),
                      std::string(modeOf(twin)));
} catch (...) {
    raiseFrom("torvex_preparePage !");
}

std::string cManager::fillBodies(const std::string& pageIdent, const std::string& mode,
                                 const std::string& html, bool editFlag) {
    PageBodies bodies(host_, connection(), twinOf(mode), reportedXmlFeed);
    if (!editFlag) return bodies.fill(pageIdent, html);
    return framed(host_, connection(), pageIdent, bodies, html);
}

std::string cManager::getBody(const std::string& pageIdent, int bodyId, int bodyType, int feedId,
                              const std::string& mode) {
    // Unlike elsewhere, the design is what a mode that isn't one stands for.
    const Twin twin = text::equals(text::trim(mode), "L") ? Twin::Live : Twin::Design;
    return PageBodies(host_, connection(), twin, reportedXmlFeed).body(pageIdent, bodyId, bodyType, feedId);
}

std::string cManager::getBodyHTML(int feedId) {
    return htmlFeed(host_, connection(), feedId);
}

std::string cManager::getBodyXML(int feedId) {
    return reportedXmlFeed(host_, connection(), feedId);
}

std::string cManager::disableLinks(const std::string& str, bool flag) try {
    const std::string quote = flag ? "\"" : "'";
    std::string word =
        text::htmlEncode(getVocab(host_.session.text("torvex_current_interface"), linksDisabledLabel));
    if (!flag) word = text::replaceAll(word, "'", "&#39;");
    const std::string off =
        " onClick=" + quote + "return false;" + quote + " title=" + quote + word + quote + " ";
    return text::replaceAll(text::replaceAll(str, "<a ", "<a" + off), "<area ", "<area" + off);
} catch (...) {
    raiseFrom("disableLinks !");
}

}  // namespace torvex
