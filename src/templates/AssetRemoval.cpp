#include "templates/AssetRemoval.h"

#include <fmt/format.h>
#include <optional>

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
#include "platform/ApplicationValues.h"
#include "platform/db/OwnTransaction.h"
#include "platform/files/FileSystem.h"
#include "platform/files/WildCards.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"
#include "replication/SharedFiles.h"
#include "templates/DesignPath.h"

namespace torvex {

namespace {

struct Entry {
    std::string name;
    std::string path;  ///< "" for an entry without a file
};

std::optional<Entry> readEntry(HostContext& host, db::Connection& connection, const RemovableAsset& asset,
                               int id) {
    auto rows = connection.query(asset.selectEntry, {id});
    if (!rows.next()) return std::nullopt;
    Entry entry{rows.text("name"), {}};
    const std::string file(text::trim(rows.text("filename")));
    // A name with wild cards would take other entries' files.
    if (asset.directoryKey.empty() || file.empty() || hasWildCard(file)) return entry;
    entry.path = designPath(host.application, asset.directoryKey, rows.text("site"), rows.text("lang"), file);
    return entry;
}

std::string_view useOf(db::Connection& connection, const RemovableAsset& asset, int id) {
    for (const AssetUse& use : asset.uses) {
        if (connection.query(use.statement, {id}).next()) return use.status;
    }
    return {};
}

/// A file on its way out: it comes back unless its entry goes too.
class LeavingFile {
  public:
    LeavingFile(HostContext& host, std::string path) : host_(host), files_(host), path_(std::move(path)) {}
    LeavingFile(const LeavingFile&) = delete;
    LeavingFile& operator=(const LeavingFile&) = delete;
    ~LeavingFile() {
        if (!bytes_) return;
        try {
            host_.files.writeBytes(path_, *bytes_);
        } catch (const std::exception& error) {
            warnOf(host_.log, "a design file is lost", error);
        }
    }

    void remove() {
        if (path_.empty()) return;
        auto bytes = host_.files.readBytes(path_);
        files_.deleteFile(path_);
        bytes_ = std::move(bytes);
    }
    /// It is gone for good, on the other servers too.
    void let() {
        bytes_.reset();
        if (!path_.empty()) files_.replicate();
    }

  private:
    HostContext& host_;
    SharedFiles files_;
    std::string path_;
    std::optional<std::string> bytes_;
};

void record(HostContext& host, const Actor& actor, int advId, const std::string& description) {
    if (advId > 0) writeActorLine(host, actor, advId, "delete", description);
}

}  // namespace

std::string removeAsset(HostContext& host, const RemovableAsset& asset, int id, int advId) {
    const Actor actor = actorOf(host);
    std::optional<LeavingFile> file;
    const auto outcome = db::tryInOwnTransaction(
        host, fmt::format("{} of {}", asset.operation, id), removalStatus::failed,
        [&](db::Connection& own) -> db::Outcome<std::string_view> {
            const auto entry = readEntry(host, own, asset, id);
            if (!entry) return db::refuse(removalStatus::missing);
            if (const auto status = useOf(own, asset, id); !status.empty()) return db::refuse(status);
            if (!takeItem(own, asset.lockItem, std::to_string(id), {actor.sessionId, actor.loginId})) {
                return db::refuse(asset.locked);
            }
            own.execute(asset.deleteEntry, {id});
            file.emplace(host, entry->path);
            file->remove();
            record(host, actor, advId, fmt::format("{} \"{}\" has been removed", asset.word, entry->name));
            return db::commit(removalStatus::removed);
        });
    if (outcome.isCommitted) file->let();
    return std::string(outcome.value);
}

}  // namespace torvex
