// cManager: the other servers.

#include <array>
#include <atomic>
#include <memory>

#include "administration/RecordRemoval.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"
#include "replication/Replication.h"

namespace torvex {

namespace {

constexpr std::string_view selectServers =
    "select serverId, serverName, serverDescription, serverIP from TORVEX_SERVERS order by serverName, "
    "serverId";
constexpr std::string_view selectName = "select serverName from TORVEX_SERVERS where serverId = ?";

constexpr std::array<std::string_view, 1> serverRows{"delete from TORVEX_SERVERS where serverId = ?"};

constexpr std::string_view probe = "/97568213567.txt";

/// Writing, finding and removing, in one go. Whether it was found is told by a value of its own, as the step
/// may come to its end later than the request.
ShareStep probing(std::shared_ptr<std::atomic<bool>> found) {
    return [found = std::move(found)](FileSystem& files, const std::string& share) {
        const std::string file = share + std::string(probe);
        files.writeText(file, "test", TextFormat::Ansi);
        if (!files.fileExists(file)) return;
        files.deleteFile(file);
        *found = true;
    };
}

}  // namespace

bool cManager::replicateFile(const std::string& file, bool overwrite, bool remove) {
    const FileChange added = overwrite ? FileChange::Replace : FileChange::Add;
    return torvex::replicateFile(host_, file, remove ? FileChange::Remove : added);
}

bool cManager::replicateFolder(const std::string& dir, bool remove) {
    return torvex::replicateFolder(host_, dir, remove ? FolderChange::Remove : FolderChange::Make);
}

bool cManager::testServer(int serverId) try {
    const std::string share = host_.application.text(applicationKey::loadBalancingShareName);
    if (serverId < 1 || text::trim(share).empty()) return false;
    auto rows = connection().query(selectName, {serverId});
    const std::string name = rows.next() ? rows.text("serverName") : std::string();
    const std::string server(text::trim(name));
    if (server.empty()) return false;
    const auto found = std::make_shared<std::atomic<bool>>(false);
    const std::string failure = onShare(host_, server, {probing(found)}).front();
    if (!failure.empty()) throw Error(failure);
    return *found;
} catch (...) {
    raiseFrom("testServer !");
}

Value cManager::getServerList() try { return db::gridOf(connection().query(selectServers), 1); } catch (...) {
    raiseFrom("getServerList !");
}

std::string cManager::getServerName() {
    return ownServerName();
}

std::string cManager::deleteServer(int serverId, int advId) {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    return removeRecord("deleteServer", serverId, advId,
                        [&](db::Connection& transaction) -> db::Outcome<std::string> {
                            auto rows = transaction.query(selectName, {serverId});
                            const std::string name = rows.next() ? rows.text("serverName") : std::string();
                            if (name.empty()) return db::refuse(record::notThere);
                            if (!takeItem(transaction, "server", std::to_string(serverId), lockSeeker())) {
                                return db::refuse(record::locked);
                            }
                            deleteRows(transaction, serverRows, serverId);
                            return db::commit("Load balancing server \"" + name + '"');
                        });
}

}  // namespace torvex
