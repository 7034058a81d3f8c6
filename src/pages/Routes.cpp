#include "pages/Routes.h"

#include <memory>

#include "accounts/GuessThrottle.h"
#include "pages/ContentPolicy.h"
#include "pages/Pages.h"
#include "pages/PolicyReports.h"

namespace torvex {

namespace {

/// A name, a password and where to go: strangers may send these forms, so they get no more than that takes.
constexpr std::uint64_t loginBody = 16 * 1024;
constexpr std::uint64_t reportBody = 16 * 1024;

}  // namespace

std::vector<PageRoute> pageRoutes() {
    // Guesses are counted over all sessions of the server's life.
    const auto throttle = std::make_shared<GuessThrottle>();
    const auto reports = std::make_shared<PolicyReports>();
    return {
        {"/", homePage},
        {"/tvx.asp", [reports](HostContext& host) { tvxPage(host, *reports); }},
        {"/torvex_msgboard/", [reports](HostContext& host) { msgBoardPage(host, *reports); }},
        {"/frameset.asp", framesetPage},
        {"/redirect.asp", redirectPage},
        {"/tvxlogin.asp", [throttle](HostContext& host) { loginPage(host, *throttle); }, true, loginBody},
        {"/tvxlogout.asp", logoutPage, true, loginBody},
        {"/error.asp", errorPage},
        {std::string(policyReportPath), [reports](HostContext& host) { policyReportPage(host, *reports); },
         true, reportBody, "application/csp-report"},
    };
}

}  // namespace torvex
