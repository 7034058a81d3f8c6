#include "pages/visitors/ForumVisit.h"

#include <limits>

#include "delivery/Access.h"
#include "delivery/PageAssembly.h"
#include "delivery/PageRecord.h"
#include "modules/forum/ForumViews.h"
#include "pages/NoStore.h"
#include "pages/PublicAddress.h"
#include "pages/visitors/PostNews.h"
#include "pages/visitors/SitePage.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

ForumVisit::ForumVisit(HostContext& host, db::Connection& connection, const PolicyReports& reports)
    : host_(host), connection_(connection), reports_(reports), server_(host, &modules_) {
    server_.connect(connection);
}

bool ForumVisit::begin() {
    server_.setCodePage();
    const Visitor visitor = visitorOf(host_);
    server_.getPage(host_.request.queryString("pageId"), visitor.username, visitor.password);
    if (server_.pgAccess() != pageAccess::open) forbidStoring(host_.response);
    const std::string elsewhere = server_.securityCheck(ForumAddress::folder);
    if (!elsewhere.empty()) {
        host_.response.redirect(withPublicPorts(host_, elsewhere));
        return false;
    }
    page_ = identify(connection_, server_.pgPageId());
    address_ = ForumAddress(page_.pageId);
    return true;
}

std::vector<ForumSummary> ForumVisit::forums() {
    return forumsOfPage(connection_, page_, server_.pgAppParamPublic());
}

std::optional<ForumRecord> ForumVisit::forum() {
    return forumOfPage(connection_, page_, server_.pgAppParamPublic(), number("forumId"));
}

int ForumVisit::number(std::string_view parameter) const {
    const double given = text::toNumber(host_.request.queryString(parameter));
    const bool isNumber = given >= 1 && given <= std::numeric_limits<std::int16_t>::max();
    return isNumber ? static_cast<int>(given) : 0;
}

void ForumVisit::show(const std::string& title, const std::function<void(HTMLTemplate&)>& fill) {
    const std::string html = server_.torvex_preparePage(title);
    if (text::startsWith(html, errorMark)) return host_.response.redirect(html.substr(errorMark.size()));
    answerFilled(host_, server_, reports_, html, fill);
}

void showForums(HostContext& host, ForumVisit& visit, bool isGone) {
    if (isGone) host.response.status = 404;
    const ForumsView view{visit.forums(), isGone};
    visit.show("forums",
               [&](HTMLTemplate& page) { fillForums(page, view, visit.address(), host.clock.now()); });
}

void showTopics(HostContext& host, db::Connection& connection, ForumVisit& visit, const ForumRecord& forum,
                bool isGone) {
    if (isGone) host.response.status = 404;
    const DateTime now = host.clock.now();
    const bool isArchive = forum.isArchiveVisible && host.request.queryString("archive") == "1";
    const TopicAge age = isArchive ? TopicAge::Archived : TopicAge::Current;
    const double page = text::toNumber(host.request.queryString("pageTo"));
    const TopicsView view{.forum = forum,
                          .topics = topicsOf(connection, forum, age, page, now),
                          .age = age,
                          .hasArchive = hasArchive(connection, forum, now),
                          .isGone = isGone,
                          .news = takeNews(host)};
    visit.show("topics", [&](HTMLTemplate& html) { fillTopics(html, view, visit.address(), now); });
}

}  // namespace torvex
