#include "pages/authors/AuthorsRoutes.h"

#include "accounts/GuessThrottle.h"
#include "installation/BuiltInterface.h"
#include "pages/authors/AuthorsPages.h"
#include "platform/HostContext.h"
#include "platform/Response.h"

namespace torvex {

namespace {

/// A name, a password and where to go.
constexpr std::uint64_t doorBody = 16 * 1024;

/// What outlives every request.
struct Kept {
    std::shared_ptr<const operations::Register> classes;
    std::shared_ptr<GuessThrottle> throttle;

    AuthorsShared shared() const { return {*classes, *throttle}; }
};

void leadIn(HostContext& host) {
    host.response.redirect("/torvex/");
}

}  // namespace

std::vector<PageRoute> authorsRoutes(std::shared_ptr<const operations::Register> classes,
                                     std::shared_ptr<GuessThrottle> throttle,
                                     std::shared_ptr<const BuiltInterface> interface) {
    if (!interface) interface = std::make_shared<const BuiltInterface>(BuiltInterface::Files());
    const auto kept = std::make_shared<const Kept>(Kept{std::move(classes), std::move(throttle)});
    PageRoute shell{"/torvex/", [interface](HostContext& host) { shellPage(host, *interface); }};
    shell.reach = PageRoute::Reach::BelowButFiles;
    return {
        {"/torvex", leadIn},
        {"/torvex/login", [kept](HostContext& host) { authorsLoginPage(host, kept->shared()); },
         methods::form, doorBody},
        {"/torvex/logout", [kept](HostContext& host) { authorsLogoutPage(host, kept->shared()); },
         methods::form, doorBody},
        {"/torvex/view.asp", [kept](HostContext& host) { viewPage(host, kept->shared()); }, methods::form},
        {"/torvex/error.asp", authorsErrorPage},
        std::move(shell),
    };
}

}  // namespace torvex
