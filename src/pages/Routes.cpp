#include "pages/Routes.h"

#include <memory>

#include "accounts/GuessThrottle.h"
#include "pages/Pages.h"

namespace torvex {

namespace {

/// A name, a password and where to go: strangers may send these forms, so they get no more than that takes.
constexpr std::uint64_t loginBody = 16 * 1024;

}  // namespace

std::vector<PageRoute> pageRoutes() {
    // Guesses are counted over all sessions of the server's life.
    const auto throttle = std::make_shared<GuessThrottle>();
    return {
        {"/", homePage},
        {"/tvx.asp", tvxPage},
        {"/frameset.asp", framesetPage},
        {"/redirect.asp", redirectPage},
        {"/tvxlogin.asp", [throttle](HostContext& host) { loginPage(host, *throttle); }, true, loginBody},
        {"/tvxlogout.asp", logoutPage, true, loginBody},
        {"/error.asp", errorPage},
    };
}

}  // namespace torvex
