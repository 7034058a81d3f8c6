#include "pages/Pages.h"
#include "pages/visitors/ForumVisit.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"

namespace torvex {

void forumTopicsPage(HostContext& host, const PolicyReports& reports) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::ReadScope oneState(*connection);
    ForumVisit visit(host, *connection, reports);
    if (!visit.begin()) return;
    const auto forum = visit.forum();
    if (!forum) return showForums(host, visit, true);
    showTopics(host, *connection, visit, *forum, false);
}

}  // namespace torvex
