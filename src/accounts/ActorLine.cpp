#include "accounts/ActorLine.h"

#include "accounts/Actor.h"
#include "records/AuditTrail.h"

namespace torvex {

void writeActorLine(HostContext& host, const Actor& actor, int advId, std::string_view action,
                    const std::string& description) {
    AuditLine line;
    line.loginId = actor.loginId;
    line.loginName = actor.fullname;
    line.advId = advId;
    line.action = action;
    line.description = description;
    writeAuditLine(host, line);
}

}  // namespace torvex
