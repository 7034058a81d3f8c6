#include "records/AuditTrail.h"

#include <fmt/format.h>
#include <vector>

#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::size_t longestAction = 50;
constexpr std::size_t longestDescription = 2000;

constexpr std::string_view insertLines =
    "insert into TORVEX_AUDIT_TRAIL (loginId, loginName, pageId, pageTitle, nodeId, advId, action, "
    "description, Date, time) values ";
constexpr std::string_view placesOfLine = "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

/// As a transaction would lock the content as well, lines are written together by one statement. This many at
/// most; what is left over goes by halves, so that there are few different statements.
constexpr std::size_t mostLines = 64;

std::string insertStatement(std::size_t lines) {
    std::string statement(insertLines);
    for (std::size_t i = 0; i < lines; ++i) statement.append(i == 0 ? "" : ", ").append(placesOfLine);
    return statement;
}

void appendValues(std::vector<db::Parameter>& values, const AuditLine& line, std::string_view day,
                  std::string_view time) {
    const bool isNobodys = line.loginName.empty() && line.loginId == 0;
    const db::Parameter loginId = isNobodys ? db::Parameter(nullptr) : db::Parameter(line.loginId);
    const std::initializer_list<db::Parameter> columns{
        loginId,
        line.loginName,
        line.pageId,
        line.pageTitle,
        line.nodeId,
        line.advId,
        text::first(text::trim(line.action), longestAction),
        text::first(text::trim(line.description), longestDescription),
        day,
        time};
    values.insert(values.end(), columns);
}

}  // namespace

void writeAuditLine(HostContext& host, const AuditLine& line) {
    writeAuditLines(host, {&line, 1});
}

void writeAuditLines(HostContext& host, std::span<const AuditLine> lines) {
    if (lines.empty()) return;
    const DateTime now = host.clock.now();
    const std::string day = date8(now);
    const std::string time = fmt::format("{:02}:{:02}:{:02}", now.hour, now.minute, now.second);
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    for (std::size_t together = mostLines; !lines.empty(); lines = lines.subspan(together)) {
        while (together > lines.size()) together /= 2;
        std::vector<db::Parameter> values;
        for (const AuditLine& line : lines.first(together)) appendValues(values, line, day, time);
        connection->execute(insertStatement(together), values);
    }
}

}  // namespace torvex
