// cManager: the audit trail.

#include <cmath>
#include <optional>

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/AuditTrail.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectEntry = "select advId from TORVEX_ADVANCED where advReference = ?";

/// A number counts as it stands, whether or not there is such an entry; but the trail has no place for a
/// fraction, nor for what is beyond any number of a row.
std::optional<double> numberedEntry(double number) {
    constexpr double mostDigits = 1e15;
    if (std::trunc(number) != number || std::abs(number) >= mostDigits) return std::nullopt;
    return number;
}

std::optional<double> advIdOf(db::Connection& connection, std::string_view advIdent) {
    if (text::isNumeric(advIdent)) return numberedEntry(text::toNumber(advIdent));
    auto rows = connection.query(selectEntry, {advIdent});
    if (!rows.next()) return std::nullopt;
    return rows.number("advId");
}

void place(AuditLine& line, const PageIdentity& page, std::string title) {
    line.pageId = page.pageId;
    line.nodeId = page.nodeId;
    line.pageTitle = std::move(title);
}

}  // namespace

void cManager::addPageLine(PageId pageId, std::string_view action, std::string_view description) try {
    const PageIdentity page = identify(connection(), pageId);
    if (!page.isValid()) return;
    AuditLine line;
    line.loginId = author_.loginId;
    line.loginName = author_.fullname;
    line.action = action;
    line.description = description;
    place(line, page, pageTitle(pageId, Twin::Design));
    writeAuditLine(host_, line);
} catch (...) {
    raiseFrom("addAuditTrail !");
}

void cManager::addAuditTrail(const std::string& pageIdent, const std::string& advIdent,
                             const std::string& action, const std::string& description, int loginId) try {
    AuditLine line;
    line.action = action;
    line.description = description;
    if (loginId < 0 && loginId != nobodysLine) return;
    if (loginId == 0) {
        line.loginId = author_.loginId;
        line.loginName = author_.fullname;
    } else if (loginId > 0) {
        line.loginId = loginId;
        line.loginName = getLoginName(loginId);
    }
    if (!pageIdent.empty()) {
        const PageIdentity page = identify(connection(), pageIdent);
        if (!page.isValid()) return;
        place(line, page, pageTitle(page.pageId, Twin::Design));
    } else if (!advIdent.empty()) {
        const auto advId = advIdOf(connection(), advIdent);
        if (!advId) return;
        line.advId = *advId;
    }
    writeAuditLine(host_, line);
} catch (...) {
    raiseFrom("addAuditTrail !");
}

}  // namespace torvex
