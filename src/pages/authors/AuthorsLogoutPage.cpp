#include "accounts/Actor.h"
#include "operations/calls/CallRun.h"
#include "pages/NoStore.h"
#include "pages/SameSite.h"
#include "pages/authors/AuthorsPages.h"
#include "pages/authors/Navigation.h"
#include "pages/authors/Notice.h"
#include "platform/HostContext.h"
#include "platform/Response.h"

namespace torvex {

namespace {

constexpr double notLoggedOutLabel = 4931;

}  // namespace

void authorsLogoutPage(HostContext& host, const AuthorsShared& shared) {
    forbidStoring(host.response);
    // No picture of a page may send its readers away.
    if (!comesFromOwnPages(host) || !isNavigation(host))
        return showNotice(host, {.status = 403, .message = notLoggedOutLabel});
    if (actorOf(host).isLoggedIn()) {
        operations::CallRun run(shared.classes, host, operations::Network{shared.throttle});
        run.run(operations::Call{"cManager", "logout", {}});
    }
    host.response.redirect("/torvex/login?out=1");
}

}  // namespace torvex
