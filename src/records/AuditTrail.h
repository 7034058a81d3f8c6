#pragma once

#include <span>
#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {
struct HostContext;

/// In place of a login's number: nobody did it.
inline constexpr int nobodysLine = -99;

/// One line of the audit trail, as it is written. Who did it is as the line names it: the rows of logins and
/// pages may be gone when it is read.
struct AuditLine {
    int loginId = 0;
    std::string loginName;
    PageId pageId = 0;
    std::string pageTitle;
    std::string nodeId;
    double advId = 0;
    std::string_view action;       ///< trimmed and cut to 50 characters
    std::string_view description;  ///< trimmed and cut to 2000 characters
};

/// Writes the line with the current day and time, on a connection of its own: it neither waits for nor rolls
/// back with a transaction of the caller.
void writeAuditLine(HostContext& host, const AuditLine& line);
/// The same for many lines, in their order.
void writeAuditLines(HostContext& host, std::span<const AuditLine> lines);

}  // namespace torvex
