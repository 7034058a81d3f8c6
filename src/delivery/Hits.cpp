// cServer: counting views.

#include <algorithm>

#include "accounts/IpAddresses.h"
#include "delivery/ViewCount.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HitCounter.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

bool isFilteredOut(std::string_view filter, std::string_view address) {
    if (filter.empty() || address.empty()) return false;
    if (text::contains(filter, address)) return true;
    const std::string normalised = normalizeIp(address);
    while (!filter.empty()) {
        const std::size_t end = std::min(filter.find(','), filter.size());
        if (isInFilterItem(filter.substr(0, end), normalised)) return true;
        filter.remove_prefix(std::min(end + 1, filter.size()));
    }
    return false;
}

}  // namespace

bool areViewsCounted(const ApplicationValues& application, std::string_view address) {
    const std::string filter = application.text(applicationKey::logFilter);
    return !isFilteredOut(text::trim(filter), text::trim(address));
}

void countView(HostContext& host, std::string_view nodeId) {
    if (nodeId.size() < PageIdentity::rootLength || host.hits.deferView(nodeId)) return;
    if (!areViewsCounted(host.application, host.request.serverVariable("remote_addr"))) return;
    const std::string mark = "," + std::string(nodeId) + ",";
    const std::string visited = host.session.text(sessionKey::visitedPages);
    if (host.hits.count(nodeId, host.clock.today(), !text::contains(visited, mark))) {
        host.session.setPassing(sessionKey::visitedPages, visited + mark);
    }
}

void cServer::logPage(const std::string& pageIdent) try {
    countView(host_, identify(connection(), pageIdent).nodeId);
} catch (...) {
    raiseFrom("logPage!");
}

}  // namespace torvex
