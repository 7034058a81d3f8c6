// cManager: the audit trail.

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/Text.h"
#include "records/AuditTrail.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

/// In place of a login's number: nobody.
constexpr int nobodysLine = -99;

constexpr std::string_view selectEntry = "select advId from TORVEX_ADVANCED where advReference = ?";

/// -1 when there is no such entry.
double advIdOf(db::Connection& connection, std::string_view advIdent) {
    if (text::isNumeric(advIdent)) return text::toNumber(advIdent);
    auto rows = connection.query(selectEntry, {advIdent});
    return rows.next() ? rows.number("advId") : -1;
}

}  // namespace

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
        line.pageId = page.pageId;
        line.nodeId = page.nodeId;
        line.pageTitle = getPageTitle(text::fromNumber(page.pageId), "D");
    } else if (!advIdent.empty()) {
        line.advId = advIdOf(connection(), advIdent);
        if (line.advId < 0) return;
    }
    writeAuditLine(host_, line);
} catch (...) {
    raiseFrom("addAuditTrail !");
}

}  // namespace torvex
