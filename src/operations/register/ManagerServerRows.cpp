#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

std::vector<Row<cManager>> managerServerRows() {
    return {
        writes("replicateFile", &cManager::replicateFile,
               {argument("file"), argument("overwrite", false), argument("delete", false)},
               "Copies a file of the installation to the other servers, or removes it there.", nobody())
            .codes({refusal(false,
                            "Replication is off, or the file isn't below the folder of the installation.")}),
        writes("replicateFolder", &cManager::replicateFolder, {argument("dir"), argument("delete", false)},
               "Makes a folder on the other servers, without its contents, or removes it there with them.",
               nobody())
            .codes({refusal(false,
                            "Replication is off, or the folder isn't below the one of the installation.")}),
        writes("testServer", &cManager::testServer, {argument("serverId")},
               "Whether a file can be written, found and removed on a server.",
               editAccess(adminEntry::servers)),
        reads("getServerList", &cManager::getServerList, {}, "The servers by name.",
              viewAccess(adminEntry::servers))
            .lists({{"serverId", Number},
                    {"serverName", Text},
                    {"serverDescription", Text},
                    {"serverIP", Text}}),
        reads("getServerName", &cManager::getServerName, {}, "The name of this machine.",
              viewAccess(adminEntry::servers)),
        writes("deleteServer", &cManager::deleteServer, {argument("serverId"), argument("advId", 0)},
               "Removes a server from the list.", editAccess(adminEntry::servers))
            .codes({code("", "It is removed."), notLoggedIn(),
                    refusal(-1, "There is no such server.", label::gone),
                    refusal(-3, "Another login has it open.", label::openElsewhere), failed()}),
        writes("createDirectory", &cManager::createDirectory, {argument("dir")},
               "Makes a folder here and on the other servers.", nobody()),
        writes("deleteDirectory", &cManager::deleteDirectory, {argument("dir")},
               "Removes a folder with all that is in it, here and on the other servers.", nobody()),
        writes("deleteFile", &cManager::deleteFile, {argument("file")},
               "Removes a file here and on the other servers; the name may hold the wild cards * and ?.",
               nobody()),
    };
}

}  // namespace torvex::operations
