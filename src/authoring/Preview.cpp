// cManager: the page as its authors see it.

#include "authoring/EditFrame.h"
#include "authoring/FeedReport.h"
#include "authoring/cManager.h"
#include "delivery/Access.h"
#include "delivery/Breadcrumb.h"
#include "delivery/Feeds.h"
#include "delivery/LinkMarking.h"
#include "delivery/PageAssembly.h"
#include "delivery/PageBodies.h"
#include "delivery/PageMetaData.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"
#include "records/PageRows.h"
#include "templates/DesignAssets.h"

namespace torvex {

namespace {

/// In place of a subtitle: the page is built for editing.
constexpr std::string_view editSwitch = "#edit#";

/// The answer for a page without a base template.
constexpr std::string_view missingBase = "error:/torvex/error.asp?error=template_body_error&flag=0";

std::string framed(HostContext& host, db::Connection& connection, const PageIdentity& page,
                   PageBodies& bodies, std::string html) {
    EditFrame frame(host, connection, page);
    return frame.withForm(bodies.fill(page.pageId, std::move(html), &frame));
}

/// The page of a record in one of the modes. What an author can ask for as well is told like that when it
/// fails.
class AuthorsView final : public AssemblyView {
  public:
    AuthorsView(HostContext& host, db::Connection& connection, const PageBuffer& page, Twin twin, bool edits)
        : host_(host), connection_(connection), page_(page), twin_(twin), edits_(edits) {}

    AssemblyPage page() override {
        return {page_.pageId, page_.nodeId,       twin_, page_.templateFile, page_.previous, page_.next,
                page_.up,     isShownToMembers(), true};
    }
    bool canLeadTo(PageId pageId) override {
        return asLevel("isPage !", [&] { return isPage(connection_, pageId, twin_); });
    }
    /// What an author looks at counts as no visit.
    void countSubPage(PageId) override {}

    std::string templateFile(PageId pageId) override { return fileOf(contentTemplateStatements, pageId); }
    std::string stylesheetFile(PageId pageId) override { return fileOf(stylesheetStatements, pageId); }
    std::string baseTemplateFile(PageId pageId) override { return fileOf(baseTemplateStatements, pageId); }

    std::string metaData() override {
        return asLevel("getMetaDataHTML  !", [&] { return metaDataHtml(connection_, identity()); });
    }
    std::string breadcrumb() override {
        return breadcrumbTrail(host_, connection_, nodeIdFrom(connection_, page_.pageId), twin_);
    }
    std::string fillBodies(PageId pageId, std::string html) override {
        return asLevel("fillBodies !", [&] {
            PageBodies bodies(host_, connection_, twin_, reportedXmlFeed);
            if (!edits_) return bodies.fill(pageId, std::move(html));
            return framed(host_, connection_, identify(connection_, pageId), bodies, std::move(html));
        });
    }

    std::string missingTemplate() const override {
        return "error:/torvex/error.asp?pageId=" + text::fromNumber(page_.pageId) +
               "&error=template_not_found&flag=0";
    }
    std::string missingBaseTemplate() const override { return std::string(missingBase); }

  private:
    PageIdentity identity() const { return identify(connection_, page_.pageId); }

    bool isShownToMembers() const {
        return asLevel("isSecuredPage !",
                       [&] { return hasExtranet(host_) && isSecured(connection_, identity()); });
    }

    std::string fileOf(const AssetStatements& assets, PageId pageId) const {
        return fileInForce(assets, host_, connection_, pageId, twin_);
    }

    HostContext& host_;
    db::Connection& connection_;
    const PageBuffer& page_;
    const Twin twin_;
    const bool edits_;
};

}  // namespace

std::string cManager::torvex_preparePage(const std::string& mode,
                                         const std::string& applicationSubTitle) try {
    if (page_.nodeId.size() < PageIdentity::rootLength || !(page_.pageId > 0)) return {};
    const Twin twin = twinOf(mode);
    const std::string subTitle = text::lowerTrim(applicationSubTitle);
    const bool edits = subTitle == editSwitch;
    AuthorsView view(host_, connection(), page_, twin, edits);
    std::string html = assemblePage(host_, connection(), view, modules_, edits ? std::string() : subTitle);
    if (html.starts_with(errorMark)) return html;
    return asLevel("buildLinks !", [&] {
        const LinkPlace place{std::string(siteOf(page_.nodeId)), std::string(langOf(page_.nodeId)), twin};
        return withMarkedLinks(host_, connection(), std::move(html), place);
    });
} catch (...) {
    raiseFrom("torvex_preparePage !");
}

std::string cManager::fillBodies(const std::string& pageIdent, const std::string& mode,
                                 const std::string& html, bool editFlag) try {
    PageBodies bodies(host_, connection(), twinOf(mode), reportedXmlFeed);
    if (!editFlag) return bodies.fill(pageIdFrom(connection(), pageIdent), html);
    return framed(host_, connection(), identify(connection(), pageIdent), bodies, html);
} catch (...) {
    raiseFrom("fillBodies !");
}

std::string cManager::buildLinks(const std::string& html, const std::string& site, const std::string& lang,
                                 const std::string& mode) try {
    return withMarkedLinks(host_, connection(), html, {site, lang, twinOf(mode)});
} catch (...) {
    raiseFrom("buildLinks !");
}

std::string cManager::getBody(const std::string& pageIdent, int bodyId, int bodyType, int feedId,
                              const std::string& mode) try {
    PageBodies bodies(host_, connection(), twinOfBody(mode), reportedXmlFeed);
    return bodies.body(pageIdFrom(connection(), pageIdent), bodyId, bodyType, feedId);
} catch (...) {
    raiseFrom("getBody !");
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
        text::htmlEncode(getVocab(host_.session.text(sessionKey::interfaceLanguage), label::linksDisabled));
    if (!flag) word = text::replaceAll(word, "'", "&#39;");
    const std::string off =
        " onClick=" + quote + "return false;" + quote + " title=" + quote + word + quote + " ";
    return text::replaceAll(text::replaceAll(str, "<a ", "<a" + off), "<area ", "<area" + off);
} catch (...) {
    raiseFrom("disableLinks !");
}

}  // namespace torvex
