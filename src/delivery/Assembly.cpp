// cServer: the finished page.

#include <memory>
#include <optional>
#include <set>

#include "delivery/PageModules.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/Text.h"
#include "records/PageIdentity.h"
#include "templates/BaseTemplate.h"
#include "templates/HTMLTemplate.h"
#include "templates/StyleSheet.h"
#include "templates/Template.h"

namespace torvex {

namespace {

constexpr std::string_view lineBreak = "\r\n";

std::string numberText(PageId pageId) {
    return text::fromNumber(pageId);
}

/// Merges a page's templates, modules and bodies into one text. The order of the steps is part of the design:
/// a later step may fill tags that an earlier one put in. Lives for one page.
class PageAssembly {
  public:
    PageAssembly(HostContext& host, cServer& server, db::Connection& connection, PageModules* modules)
        : host_(host),
          server_(server),
          connection_(connection),
          modules_(modules),
          effectivePageId_(server.pgPageId()),
          base_(host) {}

    std::string run(const std::string& subTitle) {
        dropOfflineNeighbours();
        content_.emplace(host_);
        if (!loadContent(subTitle)) return errorTarget("no_template");
        content_->replaceAllBlocks("torvex_admin", "");
        content_->replaceAllBlocks("torvex_appFrame_i", "");
        if (!loadBase()) return errorTarget("no_base_template");
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
        return server_.fillBodies(numberText(effectivePageId_), base_.strVal());
    }

  private:
    /// Links never lead to a page that doesn't show today.
    void dropOfflineNeighbours() {
        for (auto [target, asked] : {std::pair{&previous_, server_.pgPrevious()},
                                     std::pair{&next_, server_.pgNext()}, std::pair{&up_, server_.pgUp()}}) {
            *target = asked > 0 && server_.isPage(numberText(asked)) ? asked : -1;
        }
    }

    /// The page's files lie by site and language.
    std::string folder(std::string_view directoryKey) const {
        std::string path = host_.application.text(directoryKey);
        path.append(siteOf(server_.pgNodeId())).append("/").append(langOf(server_.pgNodeId())).append("/");
        return path;
    }

    bool loadContent(const std::string& subTitle) {
        if (!subTitle.empty()) {
            content_->connect(connection_);
            const PageId subPage = content_->loadAppTpl(numberText(server_.pgPageId()), subTitle);
            if (!(subPage > 0)) return false;
            effectivePageId_ = subPage;
            server_.logPage(numberText(subPage));  // a sub-page counts as a view of its own
            return true;
        }
        std::string file = server_.pgTemplateFile();
        if (file.empty()) file = server_.getTemplateFile(numberText(server_.pgPageId()));
        return !file.empty() && content_->load(folder("torvex_contentTemplates_dir") + file);
    }

    bool loadBase() {
        const std::string file = server_.getBaseTemplateFile(numberText(effectivePageId_));
        return !file.empty() && base_.load(folder("torvex_baseTemplates_dir") + file);
    }

    /// Puts the meta data first in the head. What is returned found no head and is left for the head's tag.
    std::string placeMetaData() {
        std::string metaData = server_.getMetaDataHTML(numberText(server_.pgPageId()));
        const std::size_t head = text::find(base_.strVal(), "<head");
        const std::size_t end = head == text::npos ? text::npos : base_.strVal().find('>', head);
        if (end == text::npos) return metaData;
        std::string page = base_.takeStrVal();
        page.insert(end + 1, std::string(lineBreak) + metaData + std::string(lineBreak));
        base_.setStrVal(std::move(page));
        return {};
    }

    std::string stylesheetLink() {
        const std::string file = server_.getStylesheetFile(numberText(effectivePageId_));
        if (file.empty()) return {};
        std::string link(lineBreak);
        link.append(R"(<link rel="STYLESHEET" type="text/css" href="/stylesheets/)");
        link.append(siteOf(server_.pgNodeId())).append("/").append(langOf(server_.pgNodeId()));
        return link.append("/").append(file).append("\">");
    }

    void loadMenu() {
        if (modules_ == nullptr) return;
        if (content_->tagExists("torvex_dynMenu") || base_.tagExists("torvex_dynMenu")) {
            menu_ = modules_->dynamicMenu(server_.pgPageId());
        }
    }

    /// A newsflash may show another one, but one that holds its own tag must come to an end.
    void fillNewsflashes(HTMLTemplate& target) {
        std::set<int> filled;
        while (const int number = target.iTagExists("torvex_newsflash")) {
            std::optional<ModuleOutput> output;
            if (modules_ != nullptr && filled.insert(number).second) {
                output = modules_->newsflash(siteOf(server_.pgNodeId()), langOf(server_.pgNodeId()), number);
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
            base_.replaceTag(area, content_->extractBlock(area));
        }
    }

    void fillNavigation() {
        if (!base_.blockExists("torvex_navigation")) return;
        if (!(previous_ > 0) && !(next_ > 0) && !(up_ > 0))
            return base_.replaceBlock("torvex_navigation", "");
        fillNeighbour("torvex_previous", previous_);
        fillNeighbour("torvex_next", next_);
        fillNeighbour("torvex_up", up_);
    }

    void fillNeighbour(const char* name, PageId pageId) {
        if (!(pageId > 0)) return base_.replaceBlock(name, "");
        const std::string number = numberText(pageId);
        base_.replaceTag(
            name, host_.application.isTrue("torvex_frames")
                      ? "javascript:window.top.page('" + number + "','" + nodeIdOf(connection_, pageId) + "')"
                      : "/tvx.asp?pageId=" + number);
    }

    void fillBreadcrumb() {
        if (!base_.tagExists("torvex_breadcrumb")) return;
        base_.replaceTag("torvex_breadcrumb", server_.getBreadcrumb(numberText(server_.pgPageId())));
    }

    void fillLogin() {
        const auto& application = host_.application;
        const bool secure = application.isTrue("tvx_website_ssl") || application.isTrue("tvx_extranet_ssl");
        base_.replaceTag("torvex_loginURL", siteAddress(secure) + "/tvxLogin.asp");
        const bool loggedIn = !host_.session.text("tvx_username").empty();
        base_.replaceAllBlocks(loggedIn ? "torvex_noUserLoggedIn" : "torvex_userLoggedIn", "");
        if (host_.session.isTrue("tvx_loginError")) {
            host_.session.set("tvx_loginError", false);  // the message shows once
        } else {
            base_.replaceAllBlocks("torvex_loginError", "");
        }
    }

    /// Unlike a login, a search goes through the secure address only when the page itself is on it.
    void fillSearch() {
        const auto& application = host_.application;
        const bool secured = server_.pgAccess() == pageAccess::member;
        const bool secure =
            application.isTrue("tvx_website_ssl") || (secured && application.isTrue("tvx_extranet_ssl"));
        base_.replaceTag("search_URL", siteAddress(secure) + "/torvex_search/");
    }

    std::string siteAddress(bool secure) const {
        return (secure ? "https://" : "http://") + host_.request.serverVariable("http_host");
    }

    std::string errorTarget(std::string_view error) const {
        return "error:/error.asp?pageId=" + numberText(server_.pgPageId()) + "&error=" + std::string(error);
    }

    HostContext& host_;
    cServer& server_;
    db::Connection& connection_;
    PageModules* modules_;
    PageId effectivePageId_;  ///< whose assets and bodies are taken; an application's sub-page has its own
    PageId previous_ = -1;
    PageId next_ = -1;
    PageId up_ = -1;
    std::optional<HTMLTemplate> content_;
    HTMLTemplate base_;
    std::optional<ModuleOutput> menu_;
    std::string newsflashHeaders_;
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
    return PageAssembly(host_, *this, connection(), modules_).run(text::lowerTrim(applicationSubTitle));
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
