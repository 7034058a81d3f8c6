// cManager: live pages are switched on and off.

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

// Folders never show as online, nor do pages that have the digits of the system branch. A page's dates don't
// hold it back here, since delivery asks for them itself; only one whose dates leave no day between them
// does. Its last day counts if it has a first one, or none was ever given.
constexpr std::string_view switchPage =
    "update TORVEX_PAGES_LIVE set online = case when type = 'F' or nodeId like '%99%' then 0 "
    "when onlineFrom <> '' and ? < onlineFrom and onlineTo is not null and ? > onlineTo then 0 "
    "else ? end where nodeId = ?";
constexpr std::string_view switchBranch =
    "update TORVEX_PAGES_LIVE set online = case when type = 'F' or nodeId like '%99%' then 0 "
    "when onlineFrom <> '' and ? < onlineFrom and onlineTo is not null and ? > onlineTo then 0 "
    "else ? end where nodeId >= ? and nodeId < ?";

}  // namespace

bool cManager::setOnOff(const std::string& pageIdent, const std::string& onOff, bool cascading) try {
    const PageIdentity page = identify(connection(), pageIdent);
    const bool on = text::equals(onOff, "on");
    const int wanted = on ? 1 : 0;
    const std::string today = host_.clock.today();
    if (!cascading) {
        connection().execute(switchPage, {today, today, wanted, page.nodeId});
    } else if (!page.nodeId.empty()) {
        connection().execute(switchBranch, {today, today, wanted, page.nodeId, endOfPrefix(page.nodeId)});
    }
    addPageLine(page.pageId, std::string(on ? "online" : "offline") + (cascading ? "+" : ""));
    return true;
} catch (...) {
    raiseFrom("setOnOff !");
}

}  // namespace torvex
