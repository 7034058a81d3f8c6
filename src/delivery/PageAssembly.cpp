#include "delivery/PageAssembly.h"

#include <optional>
#include <set>

#include "delivery/Access.h"
#include "delivery/PageModules.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "templates/ApplicationTemplate.h"
#include "templates/DesignPath.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view lineBreak = "\r\n";

/// The order of the steps is part of the design: a later step may fill tags that an earlier one put in. Lives
/// for one page.
class PageAssembly {
  public:
    PageAssembly(HostContext& host, db::Connection& connection, AssemblyView& view, PageModules* modules)
        : host_(host),
          connection_(connection),
          view_(view),
          page_(view.page()),
          modules_(modules),
          effectivePageId_(page_.pageId),
          base_(host) {}

    std::string run(const std::string& subTitle) {
        dropDeadNeighbours();
        content_.emplace(host_);
        if (!loadContent(subTitle)) return view_.missingTemplate();
        if (!page_.isForAuthors) content_->replaceAllBlocks("torvex_admin", "");
        content_->replaceAllBlocks("torvex_appFrame_i", "");
        if (!loadBase()) return view_.missingBaseTemplate();
        const std::string head = placeMetaData();
        const std::string stylesheet = stylesheetLink();
        loadMenu();
        fillNewsflashes(*content_);
        fillNewsflashes(base_);
        fillHead(head, stylesheet);
        fillBodyTag();
        moveLayout();
        content_.reset();
        if (menu_) base_.replaceTag("torvex_dynMenu", menu_->content);
        fillNavigation();
        fillBreadcrumb();
        fillLogin();
        fillSearch();
        return view_.fillBodies(effectivePageId_, base_.takeStrVal());
    }

  private:
    /// Links never lead to a page that can't be shown.
    void dropDeadNeighbours() {
        for (PageId* target : {&page_.previous, &page_.next, &page_.up}) {
            if (!(*target > 0) || !view_.canLeadTo(*target)) *target = -1;
        }
    }

    /// The page's files lie by site and language.
    std::string pathOf(std::string_view folderKey, std::string_view file) const {
        return designPath(host_.application, folderKey, siteOf(page_.nodeId), langOf(page_.nodeId), file);
    }

    bool loadContent(const std::string& subTitle) {
        if (!subTitle.empty()) {
            const auto subPage = asLevel("loadAppTpl !", [&] { return loadSubPage(subTitle); });
            if (!subPage) return false;
            effectivePageId_ = *subPage;
            view_.countSubPage(*subPage);
            return true;
        }
        std::string file = page_.templateFile;
        if (file.empty()) file = view_.templateFile(page_.pageId);
        return !file.empty() && content_->load(pathOf(applicationKey::contentTemplatesPath, file));
    }

    /// The page that is the template of that title.
    std::optional<PageId> loadSubPage(const std::string& title) {
        const auto found =
            applicationTemplate(host_, connection_, identify(connection_, page_.pageId), title, page_.twin);
        if (!found || !content_->load(found->path)) return std::nullopt;
        return found->pageId;
    }

    bool loadBase() {
        const std::string file = view_.baseTemplateFile(effectivePageId_);
        return !file.empty() && base_.load(pathOf(applicationKey::baseTemplatesPath, file));
    }

    /// Puts the meta data first in the head. What is returned found no head and is left for the head's tag.
    std::string placeMetaData() {
        std::string metaData = view_.metaData();
        const std::size_t head = text::find(base_.strVal(), "<head");
        const std::size_t end = head == text::npos ? text::npos : base_.strVal().find('>', head);
        if (end == text::npos) return metaData;
        std::string page = base_.takeStrVal();
        page.insert(end + 1, std::string(lineBreak) + metaData + std::string(lineBreak));
        base_.setStrVal(std::move(page));
        return {};
    }

    std::string stylesheetLink() {
        const std::string file = view_.stylesheetFile(effectivePageId_);
        if (file.empty()) return {};
        std::string link(lineBreak);
        link.append(R"(<link rel="STYLESHEET" type="text/css" href="/stylesheets/)");
        link.append(siteOf(page_.nodeId)).append("/").append(langOf(page_.nodeId));
        return link.append("/").append(file).append("\">");
    }

    ModuleCall moduleCall() const { return {host_, connection_, page_.twin, page_.isForAuthors}; }

    void loadMenu() {
        if (modules_ == nullptr) return;
        if (content_->tagExists("torvex_dynMenu") || base_.tagExists("torvex_dynMenu")) {
            menu_ = modules_->dynamicMenu(moduleCall(), page_.pageId);
        }
    }

    /// A newsflash may show another one, but one that holds its own tag must come to an end.
    void fillNewsflashes(HTMLTemplate& target) {
        std::set<int> filled;
        while (const int number = target.iTagExists("torvex_newsflash")) {
            host_.deadline().check();
            std::optional<ModuleOutput> output;
            if (modules_ != nullptr && filled.insert(number).second) {
                output =
                    modules_->newsflash(moduleCall(), siteOf(page_.nodeId), langOf(page_.nodeId), number);
            }
            if (output) newsflashHeaders_.append(lineBreak).append(output->header);
            target.replaceTag("torvex_newsflash_" + std::to_string(number), output ? output->content : "");
        }
    }

    void fillHead(const std::string& metaData, const std::string& stylesheet) {
        std::string head = metaData + stylesheet;
        if (content_->blockExists("torvex_head")) {
            head.append(lineBreak).append(content_->extractBlock("torvex_head"));
        }
        head.append(lineBreak).append(newsflashHeaders_).append(lineBreak);
        if (menu_) head.append(menu_->header);
        base_.replaceTag("torvex_head", head);
    }

    void fillBodyTag() {
        if (!base_.tagExists("torvex_bodyTag")) return;
        std::string tag;
        if (content_->blockExists("torvex_bodyTag")) tag = content_->extractBlock("torvex_bodyTag");
        if (!text::contains(tag, "<body")) tag = "<body>";
        base_.replaceTag("torvex_bodyTag", tag);
    }

    void moveLayout() {
        const std::string layout = "torvex_content";
        if (content_->blockExists(layout)) base_.replaceTag(layout, content_->extractBlock(layout));
        for (int n = 1;; ++n) {
            const std::string area = layout + "_" + std::to_string(n);
            if (!content_->blockExists(area)) break;
            host_.deadline().check();
            base_.replaceTag(area, content_->extractBlock(area));
        }
    }

    void fillNavigation() {
        if (!base_.blockExists("torvex_navigation")) return;
        if (!(page_.previous > 0) && !(page_.next > 0) && !(page_.up > 0))
            return base_.replaceBlock("torvex_navigation", "");
        fillNeighbour("torvex_previous", page_.previous);
        fillNeighbour("torvex_next", page_.next);
        fillNeighbour("torvex_up", page_.up);
    }

    void fillNeighbour(const char* name, PageId pageId) {
        if (!(pageId > 0)) return base_.replaceBlock(name, "");
        const std::string number = text::fromNumber(pageId);
        base_.replaceTag(
            name, host_.application.isTrue(applicationKey::usesFrames)
                      ? "javascript:window.top.page('" + number + "','" + nodeIdOf(connection_, pageId) + "')"
                      : "/tvx.asp?pageId=" + number);
    }

    void fillBreadcrumb() {
        if (!base_.tagExists("torvex_breadcrumb")) return;
        base_.replaceTag("torvex_breadcrumb", view_.breadcrumb());
    }

    void fillLogin() {
        const auto& application = host_.application;
        const bool secure =
            application.isTrue(applicationKey::websiteSsl) || application.isTrue(applicationKey::extranetSsl);
        if (base_.tagExists("torvex_loginURL")) {
            view_.noteLoginForm();
            base_.replaceTag("torvex_loginURL", siteAddress(secure) + "/tvxLogin.asp");
        }
        const bool loggedIn = !visitorOf(host_).username.empty();
        base_.replaceAllBlocks(loggedIn ? "torvex_noUserLoggedIn" : "torvex_userLoggedIn", "");
        if (host_.session.isTrue(sessionKey::loginError)) {
            host_.session.set(sessionKey::loginError, false);  // the message shows once
        } else {
            base_.replaceAllBlocks("torvex_loginError", "");
        }
    }

    /// Unlike a login, a search goes through the secure address only when the page itself is on it.
    void fillSearch() {
        const auto& application = host_.application;
        const bool secure = application.isTrue(applicationKey::websiteSsl) ||
                            (page_.isSecured && application.isTrue(applicationKey::extranetSsl));
        base_.replaceTag("search_URL", siteAddress(secure) + "/torvex_search/");
    }

    std::string siteAddress(bool secure) const {
        return (secure ? "https://" : "http://") + host_.request.serverVariable("http_host");
    }

    HostContext& host_;
    db::Connection& connection_;
    AssemblyView& view_;
    AssemblyPage page_;
    PageModules* modules_;
    PageId effectivePageId_;  ///< whose assets and bodies are taken; an application's sub-page has its own
    std::optional<HTMLTemplate> content_;
    HTMLTemplate base_;
    std::optional<ModuleOutput> menu_;
    std::string newsflashHeaders_;
};

}  // namespace

std::string assemblePage(HostContext& host, db::Connection& connection, AssemblyView& view,
                         PageModules* modules, const std::string& subTitle) {
    return PageAssembly(host, connection, view, modules).run(subTitle);
}

}  // namespace torvex
