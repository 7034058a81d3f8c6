// cServer: where a login or a logout leads.

#include <optional>

#include "accounts/VisitorLogin.h"
#include "accounts/VisitorProof.h"
#include "delivery/Access.h"
#include "delivery/OnlineState.h"
#include "delivery/SecondFactorAddress.h"
#include "delivery/Users.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/OperatorLog.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr double trialLimit = 5;

constexpr std::string_view selectRealGroup =
    "select groupId from TORVEX_GROUPS_USERS where userId = ? and groupId > 1 order by groupId";
constexpr std::string_view selectFirstLevel =
    "select pageId, nodeId from TORVEX_PAGES_LIVE where parent = ? order by orderId, nodeId";

std::string field(const HostContext& host, std::string_view name) {
    return text::lowerTrim(host.request.item(name));
}

bool isTarget(std::string_view target) {
    return target == "current" || target == "sitemap" || target == "group";
}

/// The page that a target names when it is none of the three words; 0 for none.
PageId pageNamed(db::Connection& connection, const std::string& target) {
    if (target.empty() || isTarget(target)) return 0;
    const PageId pageId = text::isNumeric(target) ? text::toNumber(target) : pageIdOf(connection, target);
    return pageId > 0 ? pageId : 0;
}

/// The authoring preview shows pages with their forms, but nobody logs in or out there.
bool isPreview(const HostContext& host) {
    return text::contains(host.request.serverVariable("HTTP_Referer"), "view.asp");
}

std::string addressOf(const HostContext& host, const std::string& pageIdent) {
    const bool frames = host.application.isTrue(applicationKey::usesFrames);
    return (frames ? "/redirect.asp?pageId=" : "/tvx.asp?pageId=") + pageIdent;
}

std::string addressOf(const HostContext& host, PageId pageId) {
    return addressOf(host, text::fromNumber(pageId));
}

/// What the ways of a login and a logout ask of the pages that they may lead to.
class Pages {
  public:
    Pages(HostContext& host, db::Connection& connection) : host_(host), connection_(connection) {}

    bool isOnline(PageId pageId) const {
        return asLevel("isPage !", [&] { return isPageOnline(connection_, pageId, host_.clock.today()); });
    }
    /// Whether a user, or without a name the session's, may see the page.
    bool isOpen(PageId pageId, const std::string& username = "") const {
        return asLevel("hasAccess !",
                       [&] { return mayEnter(host_, connection_, identify(connection_, pageId), username); });
    }
    /// The number of the page of a node if the session's visitor may see it, or else 0.
    PageId ifOpen(std::string_view nodeId) const {
        return asLevel("hasAccess !", [&] {
            const PageIdentity page = identify(connection_, nodeId);
            return mayEnter(host_, connection_, page) ? page.pageId : 0;
        });
    }

  private:
    HostContext& host_;
    db::Connection& connection_;
};

/// Whether an address lies on the host that was asked; another is never followed.
bool isOwnAddress(const HostContext& host, std::string_view address) {
    const std::string own = host.request.serverVariable("http_host");
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (!text::startsWith(address, scheme)) continue;
        const std::string_view rest = address.substr(scheme.size());
        return !own.empty() && text::equals(rest.substr(0, rest.find_first_of("/?#")), own);
    }
    return false;
}

/// Back to where the form was posted.
std::string refererOr(const HostContext& host, PageId currentPage) {
    const std::string referer = host.request.serverVariable("HTTP_Referer");
    const bool follow = !host.application.isTrue(applicationKey::usesFrames) && isOwnAddress(host, referer);
    return follow ? referer : addressOf(host, currentPage);
}

/// What a visitor's login form asks for.
class FormLogin {
  public:
    FormLogin(HostContext& host, db::Connection& connection)
        : host_(host), connection_(connection), pages_(host, connection) {}

    std::string run() {
        std::string address = lead();
        if (!rule_) return address;
        VisitorLogin login{{static_cast<int>(userId_), name_, proof_->stored}, *rule_, std::move(address)};
        if (proof_->renewal) keepStrongly(login.visitor.stored);
        if (admitVisitor(host_, connection_, login)) return login.address;
        return secondFactorAddress(connection_, page_);
    }

  private:
    std::string lead() {
        page_ = identify(connection_, host_.request.item("torvex_pageId"));
        if (!page_.isValid()) return {};
        readForm();
        if (isPreview(host_)) return refererOr(host_, page_.pageId);
        if (host_.session.number(sessionKey::loginTrials) >= trialLimit) return fail();
        // Left out, a name or password would be the session's; a form without one means nobody.
        if (!name_.empty() && !password_.empty()) findUser();
        if (wanted_ > 0) return enterWanted();
        if (!isTarget(target_)) throw Error("there is no login target \"" + target_ + "\"");
        if (userId_ == 0) return fail();
        if (target_ == "sitemap") return enterSitemap();
        if (!hasRealGroup()) return fail();
        return target_ == "group" ? enterGroup() : enterCurrent();
    }

    void readForm() {
        name_ = field(host_, "torvex_username");
        password_ = field(host_, "torvex_password");
        if (host_.application.isTrue(applicationKey::usesFrames))
            location_ = field(host_, "torvex_loginLocation");
        target_ = field(host_, "torvex_loginTarget");
        if (target_.empty()) target_ = "current";
        wanted_ = pageNamed(connection_, target_);
        const std::string appliedFor = host_.session.text(sessionKey::pageAppliedFor);
        if (field(host_, "torvex_loginTargetEnforced") != "true" && !appliedFor.empty()) {
            wanted_ = pageNamed(connection_, appliedFor);
        }
    }

    void findUser() {
        proof_ = asLevel("getUserId !", [&] {
            return proofOfVisitor(connection_, passwordStoreOf(host_), name_, password_);
        });
        if (proof_) userId_ = proof_->userId;
    }

    /// At last, as until then all questions go by what the row holds. A login mustn't fail for it.
    void keepStrongly(std::string& stored) {
        followUp(host_.log, "strong form of a visitor's password",
                 [&] { stored = renewVisitor(host_, *proof_, name_, password_); });
    }

    std::string enterWanted() {
        if (userId_ == 0 || !pages_.isOpen(wanted_, name_) || !pages_.isOnline(wanted_)) return fail();
        logIn("");
        return addressOf(host_, wanted_);
    }

    std::string enterGroup() {
        logIn("group");
        const PageId entry = asLevel("getEntryPage !", [&] {
            return entryPageOf(host_, connection_, {name_, proof_->stored});
        });
        return entry > 0 ? addressOf(host_, entry) : refererOr(host_, page_.pageId);
    }

    std::string enterSitemap() {
        auto rows = connection_.query(selectFirstLevel,
                                      {std::string_view(page_.nodeId).substr(0, PageIdentity::rootLength)});
        while (rows.next()) {
            const PageId candidate = rows.number("pageId");
            if (systemBranch::hasNumber(rows.view("nodeId"))) continue;
            if (!pages_.isOnline(candidate) || !pages_.isOpen(candidate, name_)) continue;
            logIn("sitemap");
            return addressOf(host_, candidate);
        }
        return fail();
    }

    std::string enterCurrent() {
        logIn("current");
        const bool shows = pages_.isOpen(page_.pageId, name_) && pages_.isOnline(page_.pageId);
        return shows ? refererOr(host_, page_.pageId) : addressOf(host_, page_.pageId);
    }

    bool hasRealGroup() { return userId_ > 0 && connection_.query(selectRealGroup, {userId_}).next(); }

    /// By which rule; she is let in when the way on is known.
    void logIn(std::string_view target) { rule_ = target; }

    std::string fail() {
        auto& session = host_.session;
        const double trials = session.number(sessionKey::loginTrials) + 1;
        session.set(sessionKey::loginTrials, trials);
        if (trials < trialLimit) {
            session.set(sessionKey::loginError, true);
        } else if (location_ != "frameset") {
            session.set(sessionKey::loginError, false);
            return "/error.asp?pageId=" + text::fromNumber(page_.pageId) + "&error=no_login";
        }
        return refererOr(host_, page_.pageId);
    }

    HostContext& host_;
    db::Connection& connection_;
    Pages pages_;
    PageIdentity page_;
    std::string name_;
    std::string password_;
    std::string location_;
    std::string target_;
    PageId wanted_ = 0;  ///< a page that is asked for by name or was applied for before
    std::optional<VisitorProof> proof_;
    double userId_ = 0;
    std::optional<std::string> rule_;
};

/// Chooses where a visitor who has just left goes on.
class LogoutWay {
  public:
    LogoutWay(const Pages& pages, const PageIdentity& current, PageId exitPage)
        : pages_(pages), current_(current), exitPage_(exitPage) {}

    /// 0 when the rule leads nowhere.
    PageId by(std::string_view rule) {
        if (rule == "group") return ifOpen(exitPage_);
        if (rule == "current") return ifOpen(current_.pageId);
        if (rule != "sitemap") return 0;
        for (std::string_view node = current_.nodeId; node.size() >= PageIdentity::rootLength;
             node = parentOf(node)) {
            if (const PageId page = pages_.ifOpen(node); page > 0) return page;
        }
        return 0;
    }

    PageId ifOpen(PageId pageId) { return pageId > 0 && pages_.isOpen(pageId) ? pageId : 0; }

    /// The first of the rules that leads somewhere.
    PageId pickLocation() {
        for (const auto* rule : {"current", "group", "sitemap"}) {
            if (const PageId page = by(rule); page > 0) return page;
        }
        return 0;
    }

  private:
    const Pages& pages_;
    const PageIdentity& current_;
    const PageId exitPage_;
};

PageId exitPageOfVisitor(HostContext& host, db::Connection& connection) {
    return asLevel("getExitPage !", [&] { return exitPageOf(host, connection, visitorOf(host)); });
}

std::string logoutTarget(const HostContext& host) {
    for (const std::string& target :
         {field(host, "torvex_logoutTarget"), host.session.text(sessionKey::visitorTarget)}) {
        if (!target.empty()) return target;
    }
    return "current";
}

}  // namespace

std::string cServer::getLoginURL() try {
    if (!hasExtranet(host_)) return {};
    return FormLogin(host_, connection()).run();
} catch (...) {
    raiseFrom("getLoginURL !");
}

std::string cServer::getLogoutURL() try {
    if (!hasExtranet(host_)) return {};
    const PageIdentity current = identify(connection(), host_.request.item("torvex_pageId"));
    if (!current.isValid()) return {};
    auto& session = host_.session;
    const std::string target = logoutTarget(host_);
    const PageId exitPage =
        session.text(sessionKey::visitorName).empty() ? -1 : exitPageOfVisitor(host_, connection());
    if (!isPreview(host_)) {
        for (const auto key :
             {sessionKey::visitorName, sessionKey::visitorPassword, sessionKey::visitorTarget})
            session.set(key, "");
    }
    const Pages pages(host_, connection());
    LogoutWay way(pages, current, exitPage);
    PageId page = isTarget(target) ? way.by(target) : way.ifOpen(pageNamed(connection(), target));
    if (!(page > 0)) page = way.pickLocation();
    return addressOf(
        host_, page > 0 ? text::fromNumber(page) : host_.application.text(applicationKey::defaultPageId));
} catch (...) {
    raiseFrom("getLogoutURL !");
}

}  // namespace torvex
