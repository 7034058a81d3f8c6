// registers: what all its subjects share.

#include "desk/registers.h"

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"

namespace torvex {

bool registers::isLoggedIn() const {
    return actorOf(host_).isLoggedIn();
}

void registers::recordChange(std::string_view operation, int advId, std::string_view action,
                             const std::string& description) {
    if (advId <= 0) return;
    const Actor actor = actorOf(host_);
    followUp(host_.log, std::string(operation) + " (" + description + ")",
             [&] { writeActorLine(host_, actor, advId, action, description); });
}

void registers::recordModule(std::string_view operation, int advId, bool isNew, bool isMarked,
                             const std::string& what) {
    if (isMarked) {
        recordChange(operation, advId, "delete", what + " has been marked for deletion");
    } else if (isNew) {
        recordChange(operation, advId, "new", "New: " + what);
    } else {
        recordChange(operation, advId, "save", what + " has been updated");
    }
}

}  // namespace torvex
