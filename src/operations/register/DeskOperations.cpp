#include "desk/Presence.h"
#include "operations/register/Classes.h"
#include "operations/register/DeskRows.h"

namespace torvex::operations {

ClassEntry deskOperations() {
    ClassEntry entry =
        describe<desk>("desk", "What an author's day needs beside the pages themselves.",
                       joined({deskWorkRows(), deskFindRows(), deskPageRows(), deskTokenRows(),
                               deskSecondFactorRows(), deskLiveRows(), deskRightsRows(), deskRunningRows()}));
    // One for all objects that this entry makes: as many authors see each other as share a register.
    entry.create = [presence = std::make_shared<Presence>()](HostContext& host) -> std::shared_ptr<void> {
        return std::make_shared<desk>(host, presence);
    };
    return entry;
}

}  // namespace torvex::operations
