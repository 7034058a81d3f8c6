// cServer: from the verdict on a page to what the visitor sees.

#include "delivery/Access.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

std::string errorValue(int code, const PageRecord& record, std::string_view today) {
    switch (code) {
        case pageAccess::noApplication:
            return "no_application";
        case pageAccess::noTemplate:
            return "no_template";
        case pageAccess::noGroups:
            return "no_login";
        case pageAccess::offline:
            if (record.onlineFrom.empty() || text::compare(today, record.onlineFrom) >= 0)
                return "page_offline";
            return "page_offline&onlineFrom=" + record.onlineFrom;
        default:
            return "page_not_found";
    }
}

/// The page where a visitor can log in to see this one; 0 or less for none.
PageId guardOf(const HostContext& host, db::Connection& connection, PageId pageId) {
    return asLevel("getLoginPage !", [&] {
        return hasExtranet(host) ? loginPageOf(connection, identify(connection, pageId)) : 0;
    });
}

}  // namespace

std::string cServer::securityCheck(const std::string& applicationDir) try {
    auto& session = host_.session;
    int code = pageAccess::notFound;
    PageId pageId = -1;
    if (record_.pageId > 0 && record_.nodeId.size() >= PageIdentity::rootLength) {
        code = record_.access;
        pageId = record_.pageId;
        // The page applied for lives for one page view after the visitor was sent to log in.
        const double counter = session.number(sessionKey::counter) + 1;
        session.setPassing(sessionKey::counter, counter);
        if (counter != 0) session.set(sessionKey::pageAppliedFor, "");
        if (systemBranch::hasDigits(record_.nodeId)) code = pageAccess::notFound;
        if (code >= 0 && !applicationDir.empty() && !text::contains(record_.appUrlPublic, applicationDir)) {
            code = pageAccess::noGroups;
        }
        if (code == pageAccess::needsLogin || code == pageAccess::refused) {
            if (const PageId login = guardOf(host_, connection(), pageId); login > 0) {
                if (session.text(sessionKey::pageAppliedFor).empty())
                    session.set(sessionKey::pageAppliedFor, pageId);
                session.setPassing(sessionKey::counter, -1);
                return "/tvx.asp?pageId=" + text::fromNumber(login);
            }
            session.set(sessionKey::pageAppliedFor, "");
            code = pageAccess::noGroups;
        }
    }
    if (code >= 0) return secureAddress();
    return "/error.asp?pageId=" + text::fromNumber(pageId) +
           "&error=" + errorValue(code, record_, host_.clock.today());
} catch (...) {
    raiseFrom("securityCheck !");
}

/// The address by which the page has to be asked for, when the present one is secure and shouldn't be, or the
/// other way round.
std::string cServer::secureAddress() const {
    const auto& application = host_.application;
    const auto& request = host_.request;
    const bool wanted =
        application.isTrue(applicationKey::websiteSsl) ||
        (record_.access == pageAccess::member && application.isTrue(applicationKey::extranetSsl));
    const std::string site = (wanted ? "https://" : "http://") + request.serverVariable("http_host");
    if (application.isTrue(applicationKey::usesFrames)) {
        if (wanted == host_.session.isTrue(sessionKey::ssl)) return {};
        return site + "/redirect.asp?pageId=" + text::fromNumber(record_.pageId);
    }
    const std::string present = request.serverVariable("HTTPS");
    const bool isRight =
        !(text::equals(present, "off") && wanted) && !(text::equals(present, "on") && !wanted);
    return isRight ? std::string()
                   : site + request.serverVariable("script_name") + "?" + request.queryString();
}

bool cServer::hasAccess(const std::string& pageIdent, const std::string& username) try {
    return mayEnter(host_, connection(), identify(connection(), pageIdent), username);
} catch (...) {
    raiseFrom("hasAccess !");
}

bool cServer::isSecuredPage(const std::string& pageIdent) try {
    return hasExtranet(host_) && isSecured(connection(), identify(connection(), pageIdent));
} catch (...) {
    raiseFrom("isSecuredPage !");
}

PageId cServer::getLoginPage(const std::string& pageIdent) try {
    return hasExtranet(host_) ? loginPageOf(connection(), identify(connection(), pageIdent)) : 0;
} catch (...) {
    raiseFrom("getLoginPage !");
}

}  // namespace torvex
