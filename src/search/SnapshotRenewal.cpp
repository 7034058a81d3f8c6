#include "search/SnapshotRenewal.h"

#include <fmt/format.h>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/LivePages.h"
#include "search/Snapshots.h"

namespace torvex {

void warnOfSnapshot(HostContext& host, std::string_view subject, std::string_view reason) {
    host.log.warn(fmt::format("snapshot of {}: {}. It is as it was; \"torvex snapshot\" makes it anew.",
                              subject, text::replaceAll(reason, "\r\n", " ")));
}

void renewSnapshots(HostContext& host, const db::ConnectionSource& connection,
                    const std::vector<PageId>& pages) try {
    db::ConnectionSource source = connection;
    db::Connection& open = source.use(host);
    Snapshots snapshots(host, open, [&](const std::string& node, const std::string& reason) {
        warnOfSnapshot(host, node, reason);
    });
    snapshots.begin();
    for (const PageId pageId : pages) {
        visitLivePage(open, nodeIdFrom(open, pageId), [&](const LivePage& page) { snapshots.renew(page); });
    }
    snapshots.finish();
} catch (const std::exception& error) {
    warnOfSnapshot(host, pages.size() == 1 ? text::fromNumber(pages.front()) : "several pages", error.what());
}

}  // namespace torvex
