#include "delivery/cServer.h"
#include "pages/Pages.h"
#include "pages/visitors/SitePage.h"

namespace torvex {

void tvxPage(HostContext& host, const PolicyReports& reports) {
    answerSitePage(host, reports, {},
                   [](cServer& server, db::Connection&) { return server.torvex_preparePage(); });
}

}  // namespace torvex
