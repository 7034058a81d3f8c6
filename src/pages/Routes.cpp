#include "pages/Routes.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "accounts/GuessThrottle.h"
#include "modules/forum/PostDesk.h"
#include "pages/ContentPolicy.h"
#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "pages/api/Api.h"
#include "pages/api/Uploads.h"
#include "pages/authors/AuthorsRoutes.h"

namespace torvex {

namespace {

/// A name, a password and where to go: strangers may send these forms, so they get no more than that takes.
constexpr std::uint64_t loginBody = 16 * 1024;
constexpr std::uint64_t reportBody = 16 * 1024;
/// The fields of a search form; its words are cut to some hundred characters anyway.
constexpr std::uint64_t searchBody = 16 * 1024;

/// More than a post may hold, so that one that is too long comes back to its author.
constexpr std::uint64_t postBody = 512 * 1024;

/// What it says to whoever isn't logged in, it says to everybody.
PageRoute open(PageRoute route) {
    route.isOpen = true;
    return route;
}

/// Open, and the same for all who bring nothing of their own.
PageRoute shared(PageRoute route) {
    route.isShared = true;
    return open(std::move(route));
}

}  // namespace

std::vector<PageRoute> pageRoutes(std::shared_ptr<const BuiltInterface> interface,
                                  const api::UploadSettings& uploads) {
    // Guesses are counted over all sessions of the server's life.
    const auto throttle = std::make_shared<GuessThrottle>();
    const auto reports = std::make_shared<PolicyReports>();
    const auto posts = std::make_shared<PostDesk>();
    std::vector<PageRoute> routes{
        shared({"/", homePage}),
        shared({"/tvx.asp", [reports](HostContext& host) { tvxPage(host, *reports); }}),
        shared({"/torvex_msgboard/", [reports](HostContext& host) { msgBoardPage(host, *reports); }}),
        open({"/frameset.asp", framesetPage}),
        {"/redirect.asp", redirectPage},
        {"/tvxlogin.asp", [throttle](HostContext& host) { loginPage(host, *throttle); }, methods::form,
         loginBody},
        {"/tvxlogout.asp", logoutPage, methods::form, loginBody},
        {"/torvex_secondfactor/",
         [reports, throttle](HostContext& host) { secondFactorPage(host, *reports, *throttle); },
         methods::form, loginBody},
        {"/torvex_search/", searchFolderPage, methods::form, searchBody},
        open({"/torvex_search/search.asp", [reports](HostContext& host) { searchPage(host, *reports); },
              methods::form, searchBody}),
        open({"/torvex_search/suggest", searchSuggestions}),
        {"/error.asp", errorPage},
        {std::string(policyReportPath),
         [reports](HostContext& host) { policyReportPage(host, *reports); },
         methods::form,
         reportBody,
         {"application/csp-report"}},
        open({"/torvex_forum/", [reports](HostContext& host) { forumsPage(host, *reports); }}),
        open({"/torvex_forum/topics.asp", [reports](HostContext& host) { forumTopicsPage(host, *reports); }}),
        open({"/torvex_forum/reactions.asp",
              [reports](HostContext& host) { forumReactionsPage(host, *reports); }}),
        {"/torvex_forum/reaction.asp",
         [reports, posts](HostContext& host) { forumReactionPage(host, *reports, *posts); }, methods::form,
         postBody},
    };
    const auto programs = std::make_shared<api::Api>(throttle);
    // One for all: objects that a register makes share what authors know of each other.
    const std::shared_ptr<const operations::Register> classes(programs, &programs->classes);
    std::ranges::move(authorsRoutes(classes, throttle, std::move(interface)), std::back_inserter(routes));
    std::ranges::move(api::routes(programs), std::back_inserter(routes));
    if (!uploads.folder.empty())
        std::ranges::move(api::uploadRoutes(programs, uploads), std::back_inserter(routes));
    return routes;
}

}  // namespace torvex
