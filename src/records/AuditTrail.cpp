#include "records/AuditTrail.h"

#include <fmt/format.h>

#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Text.h"
#include "platform/db/Link.h"

namespace torvex {

namespace {

constexpr std::size_t longestAction = 50;
constexpr std::size_t longestDescription = 2000;

constexpr std::string_view insertLine =
    "insert into TORVEX_AUDIT_TRAIL (loginId, loginName, pageId, pageTitle, nodeId, advId, action, "
    "description, "
    "Date, time) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

}  // namespace

void writeAuditLine(HostContext& host, const AuditLine& line) {
    const DateTime now = host.clock.now();
    const std::string day = date8(now);
    const std::string time = fmt::format("{:02}:{:02}:{:02}", now.hour, now.minute, now.second);
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::Parameter loginId =
        line.loginName.empty() && line.loginId == 0 ? db::Parameter(nullptr) : db::Parameter(line.loginId);
    connection->execute(insertLine,
                        {loginId, line.loginName, line.pageId, line.pageTitle, line.nodeId, line.advId,
                         text::first(text::trim(line.action), longestAction),
                         text::first(text::trim(line.description), longestDescription), day, time});
}

}  // namespace torvex
