#include "pages/Routes.h"

#include <memory>

#include "accounts/GuessThrottle.h"
#include "pages/Pages.h"

namespace torvex {

std::vector<PageRoute> pageRoutes() {
    // Guesses are counted over all sessions of the server's life.
    const auto throttle = std::make_shared<GuessThrottle>();
    return {
        {"/", homePage},
        {"/tvx.asp", tvxPage},
        {"/frameset.asp", framesetPage},
        {"/redirect.asp", redirectPage},
        {"/tvxlogin.asp", [throttle](HostContext& host) { loginPage(host, *throttle); }, true},
        {"/tvxlogout.asp", logoutPage, true},
        {"/error.asp", errorPage},
    };
}

}  // namespace torvex
